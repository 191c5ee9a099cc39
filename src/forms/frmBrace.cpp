#include "forms/frmBrace.h"

namespace velk {

void frmBrace::Fill_Fields() {
  FillFrom<Nodeb>([this](const Nodeb& n) {
    txtX = SingleToText(n.xtstiff);
    txtY = SingleToText(n.YTStiff);
    txtZ = SingleToText(n.ZTStiff);
    txtXR = SingleToText(n.XRStiff);
    txtYR = SingleToText(n.YRStiff);
  });
}

void frmBrace::Command1_Click() {
  Single x = 0, y = 0, z = 0, xr = 0, yr = 0;
  ApplyToSelection<Nodeb>(
      [&] {
        return ReadNumbers({{&txtX, &x}, {&txtY, &y}, {&txtZ, &z}, {&txtXR, &xr}, {&txtYR, &yr}}) &&
               NotBelow({x, y, z, xr, yr}, -kTolerance, "Input Data Error : Positive Numbers!");
      },
      [&](Nodeb& n) {
        n.xtstiff = x;
        n.YTStiff = y;
        n.ZTStiff = z;
        n.XRStiff = xr;
        n.YRStiff = yr;
      },
      [] {}); // a spring changes no numbering
}

} // namespace velk
