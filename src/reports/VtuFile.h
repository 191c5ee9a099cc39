#pragma once
// The model as a VTK XML unstructured grid (.vtu, ASCII) for ParaView and
// other viewers: every node a point in the plane, every defined plate a quad
// and every defined stiffener a line, with the run's results as point and
// cell arrays. The buckled shapes are vectors along Z (Mode1, Mode2, ...), so
// a "Warp By Vector" filter shows a mode.
#include "common/TextRules.h"

#include <vector>

namespace velk {

class Mesh;
class OutFile;

constexpr const char* kVtuFilter = "All Files (*.*)|*.*|VTK Unstructured Grid (*.vtu)|*.vtu";

// VTK's cell type numbers.
constexpr int kVtkLine = 3;
constexpr int kVtkQuad = 9;

// One out-of-plane value per node, in position order.
using ModeShape = std::vector<Single>;

// Mode1 is the shape the nodes hold; `extraModes` follow as Mode2, Mode3...
// A shape whose length is not the node count is fault 9.
void Write_Vtu_To(OutFile& out, Mesh& mesh, const std::vector<ModeShape>& extraModes = {});

} // namespace velk
