#include "forms/frmPlate.h"

namespace velk {

void frmPlate::Fill_Fields() {
  FillFrom<fourNode>([this](const fourNode& p) { txtthick = SingleToText(p.Thickness); });
}

void frmPlate::cmdApply_Click() {
  Single thick = 0;
  ApplyToSelection<fourNode>(
      [&] {
        return ReadNumbers({{&txtthick, &thick}}) && NotBelow({thick}, -kTolerance, "Input Error!");
      },
      [&](fourNode& p) { p.Thickness = thick; },
      [] {
        Mesh& mesh = gMesh();
        mesh.fourNodes().UpdateMaxThickness();
        mesh.fourNodes().GeneratevID();
        mesh.Nodes().GeneratevID(mesh.twoNodes(), mesh.fourNodes());
      });
}

} // namespace velk
