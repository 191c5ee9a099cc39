#pragma once
// In-plane stiffener: a two-node bar that carries axial force only and adds its
// axial stiffness to the plate nodes it sits on.
#include <array>

#include "analysis/ElementMatrix.h"

namespace velk {

using Ends2 = std::array<double, 2>;

// Forms the 4 x 4 bar matrix, order u1, v1, u2, v2, into the top left of Ke
// (the rest of Ke is untouched). The section area is width * thick. A bar of
// zero length is a division by zero.
void Stiffener_Membrane(const Ends2& endX, const Ends2& endY, double thick, double width, double E,
                        ElementMatrix& Ke);

} // namespace velk
