#include "forms/frmLoad.h"

namespace velk {

void frmLoad::Fill_Fields() {
  FillFrom<Nodeb>([this](const Nodeb& n) {
    txtLoadX = SingleToText(n.XLoad);
    txtLoadY = SingleToText(n.YLoad);
  });
}

void frmLoad::cmdApply_Click() {
  Single x = 0, y = 0;
  ApplyToSelection<Nodeb>(
      [&] {
        return ReadNumbers({{&txtLoadX, &x}, {&txtLoadY, &y}});
      },
      [&](Nodeb& n) {
        n.XLoad = x;
        n.YLoad = y;
      },
      [] {}); // a load changes no numbering
}

} // namespace velk
