#include "forms/frmStiffener.h"

namespace velk {

void frmStiffener::Fill_Fields() {
  FillFrom<twoNode>([this](const twoNode& s) {
    txtWidth = SingleToText(s.width);
    txtthick = SingleToText(s.Thickness);
  });
}

void frmStiffener::cmdApply_Click() {
  Single width = 0, thick = 0;
  ApplyToSelection<twoNode>(
      [&] {
        return ReadNumbers({{&txtWidth, &width}, {&txtthick, &thick}}) &&
               NotBelow({width}, kTolerance, "Input Error!") &&
               NotBelow({thick}, kTolerance, "Input Error!");
      },
      [&](twoNode& s) {
        s.width = width;
        s.Thickness = thick;
      },
      [] {
        Mesh& mesh = gMesh();
        mesh.twoNodes().GeneratevID();
        mesh.Nodes().GeneratevID(mesh.twoNodes(), mesh.fourNodes());
      });
}

} // namespace velk
