#pragma once
// The clipping dialog's logic ("Clipping"): four sliders in whole model units
// that cut the model down to a rectangle in x and y. A From slider never
// passes its To slider: moving one pushes the other along.
#include <string>

namespace velk {

struct ClipSlider {
  long Min = 0, Max = 0, Value = 0;
};

class frmClip {
public:
  ClipSlider sldHStart, sldHEnd, sldVStart, sldVEnd; // "X Direction", "Y Direction"
  std::string lblHS, lblHE, lblVS, lblVE;            // the sliders' values
  double hfrom = 0, hto = 0, vfrom = 0, vto = 0;
  bool Unloaded = false;

  void Form_Load();
  // The slider's Value has been moved by the user.
  void sldHStart_Change();
  void sldHEnd_Change();
  void sldVStart_Change();
  void sldVEnd_Change();
  void cmdReset_Click();
  void cmdClose_Click() { Unloaded = true; }

private:
  void SetRanges();
  void Apply();
  template <class Fn> void Trap(Fn&& fn);
};

} // namespace velk
