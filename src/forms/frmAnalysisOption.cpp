#include "forms/frmAnalysisOption.h"

#include "common/Fault.h"
#include "common/Host.h"
#include "common/TextRules.h"
#include "session/VELKMain.h"

namespace velk {

void frmAnalysisOption::Form_Load() {
  try {
    const Analysis& a = gAnalysis();
    txtShift = std::to_string(a.MaxShift);
    txtCycle = std::to_string(a.MaxCycle);
    txtFactor = SingleToText(a.ShiftFactor);
    chktorsion = a.IGSTF == vbTrue ? 1 : 0;
    chkshear = a.ISHEAR == vbTrue ? 1 : 0;
    if (a.OptionInitialB == 0) {
      optOneThird = true;
      optAll = false;
    } else if (a.OptionInitialB == 1) {
      optAll = true;
      optOneThird = false;
    }
  } catch (const std::exception&) {
    MsgBox("Error...");
  }
}

void frmAnalysisOption::cmdApply_Click() {
  if (!IsNumeric(txtShift) || !IsNumeric(txtCycle) || !IsNumeric(txtFactor)) {
    MsgBox("Input Data Error : Numbers!");
    return;
  }
  Integer shift = 0, cycle = 0;
  Single factor = 0;
  try {
    shift = TextToInteger(txtShift);
    cycle = TextToInteger(txtCycle);
    factor = TextToSingle(txtFactor);
  } catch (const Fault&) {
    MsgBox("Error...");
    return;
  }
  if (shift < 1 || cycle < 1) {
    MsgBox("Error...");
    return;
  }
  Analysis& a = gAnalysis();
  a.MaxShift = shift;
  a.MaxCycle = cycle;
  a.ShiftFactor = factor;
  a.IGSTF = ToBoolean(chktorsion != 0);
  a.ISHEAR = ToBoolean(chkshear != 0);
  a.OptionInitialB = optOneThird ? 0 : 1;
  Unloaded = true;
}

} // namespace velk
