#include "forms/frmStress.h"

#include "common/Host.h"
#include "session/VELKMain.h"
#include "view/View.h"

namespace velk {

frmStress::~frmStress() {
  // The view may be gone already at the end of a session.
  if (Visible && session().View) gView().ShowStress = nullptr, gView().ShowMaxMin = nullptr;
}

void frmStress::Form_Load() {
  View& v = gView();
  optSx = v.OptionShowStress == StressPlots::Sx;
  optSy = v.OptionShowStress == StressPlots::Sy;
  optSxy = v.OptionShowStress == StressPlots::Sxy;
  optMises = v.OptionShowStress == StressPlots::Mises;
  Visible = true;
  v.ShowStress = [this](Single s) { ShowStress(s); };
  v.ShowMaxMin = [this](Single maxS, Single minS) { ShowMaxMin(maxS, minS); };
}

void frmStress::Form_Unload() {
  if (!Visible) return;
  Visible = false;
  View& v = gView();
  v.ShowStress = nullptr;
  v.ShowMaxMin = nullptr;
  v.OptionShowStress = StressPlots::None;
  if (StressPlotCheckOff) StressPlotCheckOff();
  v.Refresh();
}

void frmStress::OKButton_Click() {
  try {
    View& v = gView();
    v.OptionShowStress = optSx      ? StressPlots::Sx
                         : optSy    ? StressPlots::Sy
                         : optSxy   ? StressPlots::Sxy
                         : optMises ? StressPlots::Mises
                                    : StressPlots::None;
    v.Refresh();
  } catch (const std::exception&) {
    MsgBox("Error...");
  }
}

void frmStress::ShowStress(Single stressvalue) {
  lblStress = Format(stressvalue, "0.00E+00");
  if (Changed) Changed();
}

void frmStress::ShowMaxMin(Single maxS, Single minS) {
  lblMax = Format(maxS, "0.00E+00");
  lblMin = Format(minS, "0.00E+00");
  ShownMax = maxS;
  ShownMin = minS;
  RangeShown = true;
  if (Changed) Changed();
}

} // namespace velk
