#include "forms/frmOption.h"

#include "common/Fault.h"
#include "common/Host.h"
#include "common/TextRules.h"
#include "session/VELKMain.h"
#include "view/View.h"

namespace velk {

namespace {
int Check(Boolean b) {
  return b == vbTrue ? 1 : 0;
}
Boolean FromCheck(int c) {
  return c == 1 ? vbTrue : vbFalse;
}
} // namespace

void frmOption::Form_Activate() {
  const View& v = gView();
  chkCoordinate = Check(v.OptionShowCoordinate);
  chkBoundary = Check(v.OptionShowBoundary);
  chkLoad = Check(v.OptionShowLoad);
  chkBrace = Check(v.OptionShowBrace);
  chkStiffener = Check(v.OptionShowStiffener);
  chkBoundaryValue = Check(v.OptionShowBoundaryValue);
  chkLoadValue = Check(v.OptionShowLoadValue);
  chkBraceValue = Check(v.OptionShowBraceValue);
  chkShowNodeNumber = Check(v.OptionShowNodeNumber);
  chkShowStiffenerNumber = Check(v.OptionShowStiffenerNumber);
  chkShowPlateNumber = Check(v.OptionShowPlateNumber);
  chkPlate = Check(v.OptionShowPlate);
  txtInpMag = SingleToText(v.OptionInpMagFactor);
  txtOutpMag = SingleToText(v.OptionOutpMagFactor);
  chkHideModelBuckle = Check(v.OptionHideModelWhenBuckle);
  chkShade = Check(v.OptionShading);
  txtSelectedMarker = SingleToText(v.OptionSelectedMarker_Size);
  txtPropertyMarker = SingleToText(v.OptionPropertyMarker_Size);
  txtLayerOffset = SingleToText(v.OptionLayerOffset_Distance);
  txtFontSize = std::to_string(v.OptionFontSize);
  txtZoomFactor = SingleToText(v.OptionZoomCenterFactor);
}

// Each step stores as it goes: a field that is no number stops the command
// where it stands, with what came before it kept and no frame.
void frmOption::cmdApply_Click() {
  try {
    View& v = gView();
    v.OptionShowCoordinate = FromCheck(chkCoordinate);
    v.OptionShowNodeNumber = FromCheck(chkShowNodeNumber);
    v.OptionShowStiffenerNumber = FromCheck(chkShowStiffenerNumber);
    v.OptionShowPlateNumber = FromCheck(chkShowPlateNumber);
    v.OptionShowPlate = FromCheck(chkPlate);
    v.OptionShowStiffener = FromCheck(chkStiffener);
    v.OptionShowBoundary = FromCheck(chkBoundary);
    v.OptionShowBoundaryValue = FromCheck(chkBoundaryValue);
    v.OptionShowLoad = FromCheck(chkLoad);
    v.OptionShowLoadValue = FromCheck(chkLoadValue);
    v.OptionShowBrace = FromCheck(chkBrace);
    v.OptionShowBraceValue = FromCheck(chkBraceValue);
    v.OptionHideModelWhenBuckle = FromCheck(chkHideModelBuckle);
    v.OptionShading = FromCheck(chkShade);

    v.OptionInpMagFactor = TextToSingle(txtInpMag);
    v.OptionOutpMagFactor = TextToSingle(txtOutpMag);
    v.OptionSelectedMarker_Size = TextToSingle(txtSelectedMarker);
    v.OptionPropertyMarker_Size = TextToSingle(txtPropertyMarker);
    v.OptionLayerOffset_Distance = TextToSingle(txtLayerOffset);

    // Out of range falls back to the value in force, without a word.
    const Integer font = TextToInteger(txtFontSize);
    if (font > 5 && font < 20) {
      v.OptionFontSize = font;
      if (hooks().UpdateFont) hooks().UpdateFont(v.OptionFontSize);
    } else {
      txtFontSize = std::to_string(v.OptionFontSize);
    }
    const Single zoom = TextToSingle(txtZoomFactor);
    if (zoom >= 1 && zoom <= 10)
      v.OptionZoomCenterFactor = zoom;
    else
      txtZoomFactor = SingleToText(v.OptionZoomCenterFactor);

    if (hooks().Paint) hooks().Paint();
  } catch (const std::exception&) {
    MsgBox("Error: Input Data!");
  }
}

} // namespace velk
