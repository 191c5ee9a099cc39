#include "analysis/StiffenerBending.h"

#include "analysis/CheckedArithmetic.h"

namespace velk {

namespace {

struct Axis {
  double L, c, s;
};

// Length and direction of a member; a member of zero length is degenerate.
Axis MemberAxis(const Ends2& endX, const Ends2& endY) {
  const double dx = endX[1] - endX[0];
  const double dy = endY[1] - endY[0];
  const double L = Divisor(Sqrt(dx * dx + dy * dy));
  return {L, Div(dx, L), Div(dy, L)};
}

} // namespace

void Stiffener_Block(ElementMatrix& Ke, int row, int column, double c, double s, double a, double p,
                     double q, double t, double d) {
  const double cs = (t - d) * c * s;
  const double block[3][3] = {
      {a, -s * p, c * p},
      {-s * q, c * c * t + s * s * d, cs},
      {c * q, cs, s * s * t + c * c * d},
  };
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j)
      Ke(row + i, column + j) = Finite(block[i][j]);
}

void Stiffener_Bending(const Ends2& endX, const Ends2& endY, double thick, double width, double E,
                       double nu, int shear, ElementMatrix& Ke) {
  const Axis ax = MemberAxis(endX, endY);
  const double L = ax.L;

  // Shear deformation of the deep bar; the factor is 1 - nu, as the program
  // has always had it.
  const double ph = shear == 0 ? 0.0 : Div(width * width * (1.0 - nu) * 0.5, L * L);

  const double EI = width * width * width * E * thick / 12.0;
  const double T = Div(thick * thick * thick * E * width * (1.0 - Div(0.63 * thick, width)),
                       (1.0 + nu) * 6.0 * L);

  const double e = 4.0 * ph + 1.0;
  const double A = Div(12.0 * EI, L * L * L * e);
  const double Bb = Div(-6.0 * EI, L * L * e);
  const double Dd = Div(4.0 * EI * (1.0 + ph), L * e);
  const double Df = Div(2.0 * EI * (1.0 - 2.0 * ph), L * e);

  Stiffener_Block(Ke, 1, 1, ax.c, ax.s, A, Bb, Bb, T, Dd);
  Stiffener_Block(Ke, 4, 4, ax.c, ax.s, A, -Bb, -Bb, T, Dd);
  Stiffener_Block(Ke, 1, 4, ax.c, ax.s, -A, Bb, -Bb, -T, Df);
  Stiffener_Block(Ke, 4, 1, ax.c, ax.s, -A, -Bb, Bb, -T, Df);
}

double Stiffener_Stress(const Ends2& endX, const Ends2& endY, const Ends2& endU, const Ends2& endV,
                        double E) {
  const Axis ax = MemberAxis(endX, endY);
  const double stretch = (ax.c * endU[1] + ax.s * endV[1]) - (ax.c * endU[0] + ax.s * endV[0]);
  return Div(stretch * E, ax.L);
}

double Stiffener_Geometric(const Ends2& endX, const Ends2& endY, double thick, double width,
                           double E, int torsion, const Ends2& endU, const Ends2& endV,
                           ElementMatrix& Kg) {
  Kg.ClearCorner(6);
  const Axis ax = MemberAxis(endX, endY);
  const double sig = Stiffener_Stress(endX, endY, endU, endV, E);

  // The axial force acts on the deflections only, with the bar's own section.
  const double N = Div(sig * width * thick, ax.L);
  Kg(1, 1) = N;
  Kg(1, 4) = -N;
  Kg(4, 1) = -N;
  Kg(4, 4) = N;

  if (torsion != 0) {
    // Axial stress stiffens (tension) or softens (compression) the twist about
    // the member's axis: the end rotations projected on the axis, with the
    // section constant t w^3 / 12 alone.
    const double g = Div(sig * thick * width * width * width, 12.0 * ax.L);
    const double v[7] = {0.0, 0.0, ax.c, ax.s, 0.0, -ax.c, -ax.s};
    const int dofs[4] = {2, 3, 5, 6};
    for (int i : dofs)
      for (int j : dofs)
        Kg(i, j) = Finite(g * v[i] * v[j]);
  }
  return sig;
}

} // namespace velk
