#include "forms/frmClip.h"

#include "common/Host.h"
#include "common/TextRules.h"
#include "session/VELKMain.h"
#include "view/View.h"

#include <algorithm>

namespace velk {

namespace {

// A slider takes whole numbers only, and none outside its ends: the clip
// bounds do not follow the limits when the window is resized.
void SetValue(ClipSlider& s, double value) {
  s.Value = std::clamp<long>(CLng(value), s.Min, std::max(s.Min, s.Max));
}

// One pair of sliders after `moved` has moved: the other is pushed along when
// it was reached or passed, and both labels and fields follow.
void Push(ClipSlider& moved, ClipSlider& other, bool movedIsStart, std::string& movedLabel,
          std::string& otherLabel, double& movedField, double& otherField) {
  if (movedIsStart ? moved.Value >= other.Value : moved.Value <= other.Value) {
    other.Value = moved.Value;
    otherField = other.Value;
    otherLabel = std::to_string(other.Value);
  }
  movedField = moved.Value;
  movedLabel = std::to_string(moved.Value);
}

} // namespace

template <class Fn> void frmClip::Trap(Fn&& fn) {
  try {
    fn();
  } catch (const std::exception&) {
    MsgBox("Error..[Clipping]");
  }
}

void frmClip::SetRanges() {
  const View& v = gView();
  sldHStart.Min = sldHEnd.Min = CLng(v.SLimitX0);
  sldHStart.Max = sldHEnd.Max = CLng(v.SLimitX1);
  sldVStart.Min = sldVEnd.Min = CLng(v.SLimitY0);
  sldVStart.Max = sldVEnd.Max = CLng(v.SLimitY1);
}

void frmClip::Apply() {
  gView().SetUpClipEq(hfrom, hto, vfrom, vto);
}

void frmClip::Form_Load() {
  Trap([this] {
    SetRanges();
    const View& v = gView();
    SetValue(sldHStart, v.HClipFrom);
    SetValue(sldHEnd, v.HClipTo);
    SetValue(sldVStart, v.VClipFrom);
    SetValue(sldVEnd, v.VClipTo);
    lblHS = std::to_string(sldHStart.Value), hfrom = sldHStart.Value;
    lblVS = std::to_string(sldVStart.Value), vfrom = sldVStart.Value;
    lblHE = std::to_string(sldHEnd.Value), hto = sldHEnd.Value;
    lblVE = std::to_string(sldVEnd.Value), vto = sldVEnd.Value;
  });
}

void frmClip::sldHStart_Change() {
  Trap([this] {
    Push(sldHStart, sldHEnd, true, lblHS, lblHE, hfrom, hto);
    Apply();
  });
}
void frmClip::sldHEnd_Change() {
  Trap([this] {
    Push(sldHEnd, sldHStart, false, lblHE, lblHS, hto, hfrom);
    Apply();
  });
}
void frmClip::sldVStart_Change() {
  Trap([this] {
    Push(sldVStart, sldVEnd, true, lblVS, lblVE, vfrom, vto);
    Apply();
  });
}
void frmClip::sldVEnd_Change() {
  Trap([this] {
    Push(sldVEnd, sldVStart, false, lblVE, lblVS, vto, vfrom);
    Apply();
  });
}

void frmClip::cmdReset_Click() {
  Trap([this] {
    SetRanges();
    sldHStart.Value = sldHStart.Min;
    sldHEnd.Value = sldHEnd.Max;
    sldVStart.Value = sldVStart.Min;
    sldVEnd.Value = sldVEnd.Max;
    hfrom = sldHStart.Value, hto = sldHEnd.Value;
    vfrom = sldVStart.Value, vto = sldVEnd.Value;
    lblHS = std::to_string(sldHStart.Value), lblHE = std::to_string(sldHEnd.Value);
    lblVS = std::to_string(sldVStart.Value), lblVE = std::to_string(sldVEnd.Value);
    Apply();
  });
}

} // namespace velk
