#include "forms/frmBoundary.h"

#include <cstdlib>

namespace velk {

void frmBoundary::Fill_Fields() {
  FillFrom<Nodeb>([this](const Nodeb& n) {
    const Boolean flags[] = {n.XTDir(), n.YTDir(), n.ZTDir(), n.XRDir(), n.YRDir()};
    for (std::size_t k = 0; k < Check1.size(); ++k)
      Check1[k] = std::abs(flags[k]);
    txtX = Check1[0] ? SingleToText(n.XTDirValue) : "0.0";
    txtY = Check1[1] ? SingleToText(n.YTDirValue) : "0.0";
  });
}

void frmBoundary::Command1_Click() {
  Single x = 0, y = 0;
  ApplyToSelection<Nodeb>(
      [&] {
        // A value is read only where its box is checked: letters elsewhere do no harm.
        std::vector<Number> values;
        if (Check1[0]) values.push_back({&txtX, &x});
        if (Check1[1]) values.push_back({&txtY, &y});
        return ReadNumbers(values);
      },
      [&](Nodeb& n) {
        n.SetXTDir(Check1[0]);
        n.SetYTDir(Check1[1]);
        n.SetZTDir(Check1[2]);
        n.SetXRDir(Check1[3]);
        n.SetYRDir(Check1[4]);
        if (Check1[0]) n.XTDirValue = x;
        if (Check1[1]) n.YTDirValue = y;
      },
      [] {}); // a restraint changes no numbering
}

} // namespace velk
