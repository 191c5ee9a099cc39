#pragma once
// The stress window's logic: the component of the plot, its extremes and the
// value under the pointer. The window stands beside the main window.
#include "common/TextRules.h"

#include <functional>
#include <string>

namespace velk {

class frmStress {
public:
  // Caption "Plot".
  bool optSx = false;    // "Sx && Stiffener "
  bool optSy = false;    // "Sy"
  bool optSxy = false;   // "Sxy"
  bool optMises = false; // "Mises"
  std::string lblStress; // the value under the pointer
  std::string lblMax;    // "Max"
  std::string lblMin;    // "Min"
  // The extremes last shown, for the colour scale beside them.
  Single ShownMax = 0, ShownMin = 0;
  bool RangeShown = false;

  bool Visible = false;
  // The window writes its labels again; the menu takes the check of Stress Plot off.
  std::function<void()> Changed;
  std::function<void()> StressPlotCheckOff;

  ~frmStress();
  void Form_Load();   // the window opens
  void Form_Unload(); // the window closes, by any way
  void OKButton_Click();
  void CancelButton_Click() { Form_Unload(); }
  void ShowStress(Single stressvalue);
  void ShowMaxMin(Single maxS, Single minS);
};

} // namespace velk
