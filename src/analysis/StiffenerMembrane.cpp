#include "analysis/StiffenerMembrane.h"

#include "analysis/CheckedArithmetic.h"

namespace velk {

void Stiffener_Membrane(const Ends2& endX, const Ends2& endY, double thick, double width, double E,
                        ElementMatrix& Ke) {
  const double dx = endX[1] - endX[0];
  const double dy = endY[1] - endY[0];
  const double L = Divisor(Sqrt(dx * dx + dy * dy));
  const double c = Div(dx, L);
  const double s = Div(dy, L);
  const double k = Div(width * thick * E, L);
  const double a = Finite(c * c * k);
  const double b = Finite(s * s * k);
  const double d = Finite(c * s * k);
  const double rows[4][4] = {{a, d, -a, -d}, {d, b, -d, -b}, {-a, -d, a, d}, {-d, -b, d, b}};
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j)
      Ke(i + 1, j + 1) = rows[i][j];
}

} // namespace velk
