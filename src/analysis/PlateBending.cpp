#include "analysis/PlateBending.h"

#include "analysis/CheckedArithmetic.h"

namespace velk {

namespace {

// Cyclic successor among the vertex numbers 1, 2, 3.
constexpr int Next(int i) {
  return i % 3 + 1;
}

// The sides of a triangle, indexes 1..3: side i is opposite vertex i, a(i) and
// b(i) are its projections, l(i) its length; lam, mu, g, p, q are the ratios
// the curvature formulas take from it. C is twice the area.
struct Sides {
  double a[4], b[4], C;
  double l[4], lam[4], mu[4], g[4], p[4], q[4];
};

// Projections and area. Zero area is a division by zero.
Sides Side_Projections(double x1, double x2, double x3, double y1, double y2, double y3) {
  Sides s{};
  const double a[4] = {0.0, x3 - x2, x1 - x3, x2 - x1};
  const double b[4] = {0.0, y2 - y3, y3 - y1, y1 - y2};
  for (int i = 0; i < 4; ++i) {
    s.a[i] = a[i];
    s.b[i] = b[i];
  }
  s.C = Divisor(Finite(a[3] * b[2] - a[2] * b[3]));
  return s;
}

// Lengths and ratios. A side of zero length is a division by zero.
void Side_Ratios(Sides& s) {
  const double *a = s.a, *b = s.b;
  for (int i = 1; i <= 3; ++i) {
    const int j = Next(i);
    s.l[i] = Divisor(Sqrt(a[i] * a[i] + b[i] * b[i]));
    s.lam[i] = Div(-(a[i] * a[j] + b[i] * b[j]), s.l[i] * s.l[i]);
    s.mu[i] = 1.0 - s.lam[i];
    s.g[i] = Div(4.0 * s.C, s.l[i]);
    s.p[i] = Div(-0.5 * b[i], s.l[i]);
    s.q[i] = Div(0.5 * a[i], s.l[i]);
  }
}

// Curvature transformation: rows curvature x, curvature y, twist.
void Curvature_Transformation(const Sides& s, double (&M)[4][7]) {
  for (int i = 1; i <= 3; ++i) {
    const int j = Next(i);
    const double ai = s.a[i] / s.C, bi = s.b[i] / s.C, aj = s.a[j] / s.C, bj = s.b[j] / s.C;
    M[1][i] = bi * bi;
    M[1][i + 3] = 2.0 * bi * bj;
    M[2][i] = ai * ai;
    M[2][i + 3] = 2.0 * ai * aj;
    M[3][i] = 2.0 * ai * bi;
    M[3][i + 3] = 2.0 * (ai * bj + aj * bi);
  }
}

// Thickness weights of each sub-triangle (diagonal 35, off-diagonal 17.5 at
// constant thickness).
void Thickness_Weights(const double (&h)[4], double hm, double (&H)[4][3][3]) {
  for (int i = 1; i <= 3; ++i) {
    const double r = Div(h[i], hm);
    const double s = Div(h[Next(i)], hm);
    const double r2 = r * r, s2 = s * s, rs = r * s;
    const double h11 = (10 * r + 6 * s + 6) * r2 + (3 * r + s + 1) * s2 + 3 * r + s + 3 * rs + 1;
    const double h22 = (3 * s + r + 1) * r2 + (6 * r + 10 * s + 6) * s2 + r + 3 * s + 3 * rs + 1;
    const double h33 = (r + s + 3) * r2 + (r + s + 3) * s2 + 6 * r + 6 * s + 3 * rs + 10;
    const double h12 =
        (2 * r + 3 * s + 1.5) * r2 + (3 * r + 2 * s + 1.5) * s2 + r + s + 2 * rs + 0.5;
    const double h13 =
        (2 * r + 1.5 * s + 3) * r2 + (0.5 * s + r + 1) * s2 + 3 * r + 1.5 * s + 2 * rs + 2;
    const double h23 =
        (0.5 * r + s + 1) * r2 + (1.5 * r + 2 * s + 3) * s2 + 1.5 * r + 3 * s + 2 * rs + 2;
    const double Hi[3][3] = {{h11, h12, h13}, {h12, h22, h23}, {h13, h23, h33}};
    for (int m = 0; m < 3; ++m)
      for (int n = 0; n < 3; ++n)
        H[i][m][n] = Hi[m][n];
  }
}

// Curvatures at seven points in terms of the 12 freedoms: rows 6(i-1)+r and
// 6(i-1)+3+r for the two outer points of sub-triangle i, 18+r for the centre.
void Curvature_Points(const Sides& s, const double (&M)[4][7], double (&Q)[22][13]) {
  const double *a = s.a, *b = s.b, *lam = s.lam, *mu = s.mu, *g = s.g;
  for (int i = 1; i <= 3; ++i) {
    const int j = Next(i);
    const int k = Next(j);
    for (int r = 1; r <= 3; ++r) {
      const double Mi = M[r][i], Mj = M[r][j], Mk = M[r][k];
      const double Ni = M[r][i + 3], Nj = M[r][j + 3], Nk = M[r][k + 3];
      const double t1 = b[i] - b[k] * lam[k];
      const double t2 = -2 * b[i] + b[j] * mu[j] + b[k] * lam[k];
      const double t3 = a[i] - a[k] * lam[k];
      const double t4 = -2 * a[i] + a[j] * mu[j] + a[k] * lam[k];
      const double t5 = b[k] * mu[k] - b[j];
      const double t6 = 2 * b[j] - b[k] * mu[k] - b[i] * lam[i];
      const double t7 = a[k] * mu[k] - a[j];
      const double t8 = 2 * a[j] - a[k] * mu[k] - a[i] * lam[i];
      const double t9 = b[k] - 2 * b[j] - b[j] * lam[j];
      const double t10 = 2 * b[i] - b[k] + b[i] * mu[i];
      const double t11 = a[k] - 2 * a[j] - a[j] * lam[j];
      const double t12 = 2 * a[i] - a[k] + a[i] * mu[i];

      double* U = Q[6 * (i - 1) + r];
      double* V = Q[6 * (i - 1) + 3 + r];
      U[3 * i - 2] = 6 * (-Mi + mu[j] * Mk + lam[k] * (Nj - Mk));
      V[3 * i - 2] = 6 * (lam[k] * (Nk - Mk) + Mi);
      U[3 * i - 1] = t1 * Nj + t2 * Mk - 2 * b[k] * Ni + 2 * b[j] * Nk;
      V[3 * i - 1] = t1 * (Nk - Mk) - 2 * b[k] * Mi;
      U[3 * i] = t3 * Nj + t4 * Mk - 2 * a[k] * Ni + 2 * a[j] * Nk;
      V[3 * i] = t3 * (Nk - Mk) - 2 * a[k] * Mi;
      U[3 * j - 2] = 6 * (mu[k] * (Nj - Mk) + Mj);
      V[3 * j - 2] = 6 * (-Mj + lam[i] * Mk + mu[k] * (Nk - Mk));
      U[3 * j - 1] = t5 * (Nj - Mk) + 2 * b[k] * Mj;
      V[3 * j - 1] = t5 * Nk + t6 * Mk + 2 * b[k] * Ni - 2 * b[i] * Nj;
      U[3 * j] = t7 * (Nj - Mk) + 2 * a[k] * Mj;
      V[3 * j] = t7 * Nk + t8 * Mk + 2 * a[k] * Ni - 2 * a[i] * Nj;
      U[3 * k - 2] = 6 * (1 + lam[j]) * Mk;
      V[3 * k - 2] = 6 * (1 + mu[i]) * Mk;
      U[3 * k - 1] = t9 * Mk;
      V[3 * k - 1] = t10 * Mk;
      U[3 * k] = t11 * Mk;
      V[3 * k] = t12 * Mk;
      U[9 + i] = 0.0;
      V[9 + i] = g[i] * Mk;
      U[9 + j] = g[j] * Mk;
      V[9 + j] = 0.0;
      U[9 + k] = g[k] * (Nj - Mk);
      V[9 + k] = g[k] * (Nk - Mk);

      double* S = Q[18 + r];
      S[3 * i - 2] = 2 * (lam[k] * Ni + Mi + mu[j] * Nk);
      S[3 * k - 1] = (2 * (b[i] - b[j]) * Mk + t10 * Nj + t9 * Nk) / 3;
      S[3 * k] = (2 * (a[i] - a[j]) * Mk + t12 * Nj + t11 * Nk) / 3;
      S[9 + k] = g[k] * Ni / 3;
    }
  }
}

// Ties the normal slope at the middle of an outer side to the mean of the
// rotations at its ends, so that the slope varies linearly along the side and
// matches a neighbour of any kind.
void Tie_Side(double (&Q)[22][13], int slopeColumn, int vertexA, int vertexB, double qs,
              double ps) {
  for (int row = 1; row <= 21; ++row) {
    const double v = Q[row][slopeColumn];
    Q[row][3 * vertexA - 1] += qs * v;
    Q[row][3 * vertexB - 1] += qs * v;
    Q[row][3 * vertexA] += ps * v;
    Q[row][3 * vertexB] += ps * v;
  }
}

// T = scale Q' (H D) Q over the first keep columns: the thickness-weighted
// curvatures of each column through the rigidity D, against every column.
void Stiffness_Product(const double (&Q)[22][13], const double (&H)[4][3][3],
                       const double (&D)[3][3], double scale, int keep, TriangleMatrix& T) {
  for (int c = 1; c <= keep; ++c) {
    // W = H Q(:,c): the thickness-weighted curvatures of this column.
    double W[22] = {};
    for (int r = 1; r <= 3; ++r) {
      W[18 + r] = 0.0;
      for (int i = 1; i <= 3; ++i) {
        const int u = 6 * (i - 1) + r;
        const int v = u + 3;
        const double tri[3] = {Q[u][c], Q[v][c], Q[18 + r][c]};
        const double(&Hi)[3][3] = H[i];
        W[u] = Hi[0][0] * tri[0] + Hi[0][1] * tri[1] + Hi[0][2] * tri[2];
        W[v] = Hi[1][0] * tri[0] + Hi[1][1] * tri[1] + Hi[1][2] * tri[2];
        W[18 + r] += Hi[2][0] * tri[0] + Hi[2][1] * tri[1] + Hi[2][2] * tri[2];
      }
    }
    // V = D W at each of the seven points.
    double V[22] = {};
    for (int pt = 0; pt < 7; ++pt)
      for (int r = 0; r < 3; ++r)
        V[3 * pt + 1 + r] =
            D[r][0] * W[3 * pt + 1] + D[r][1] * W[3 * pt + 2] + D[r][2] * W[3 * pt + 3];
    for (int lcol = 1; lcol <= c; ++lcol) {
      double sum = 0.0;
      for (int row = 1; row <= 21; ++row)
        sum += V[row] * Q[row][lcol];
      const double value = Finite(scale * sum);
      T(lcol, c) = value;
      T(c, lcol) = value;
    }
  }
}

} // namespace

void Triangle_Bending(double E, double nu, double h1, double h2, double h3, double x1, double x2,
                      double x3, double y1, double y2, double y3, TriangleMatrix& T, int keep) {
  T.Clear();
  Sides s = Side_Projections(x1, x2, x3, y1, y2, y3);
  const double h[4] = {0.0, h1, h2, h3};
  const double hm = (h1 + h2 + h3) / 3.0;
  // The 1/12 of the bending rigidity and the weights of the seven-point rule
  // are folded into 15120.
  const double scale = Finite(hm * hm * hm * s.C / 15120.0);
  Side_Ratios(s);

  const double D11 = Div(E, 1.0 - nu * nu);
  const double D12 = nu * D11;
  const double D33 = (1.0 - nu) * D11 / 2.0;
  const double D[3][3] = {{D11, D12, 0.0}, {D12, D11, 0.0}, {0.0, 0.0, D33}};

  double M[4][7] = {};
  Curvature_Transformation(s, M);
  double H[4][3][3];
  Thickness_Weights(h, hm, H);
  double Q[22][13] = {};
  Curvature_Points(s, M, Q);

  Tie_Side(Q, 12, 1, 2, s.q[3], s.p[3]);
  if (keep < 11) Tie_Side(Q, 11, 3, 1, s.q[2], s.p[2]);
  if (keep < 10) Tie_Side(Q, 10, 2, 3, s.q[1], s.p[1]);
  Stiffness_Product(Q, H, D, scale, keep, T);
}

void Plate_Bending(double E, double nu, double thick, const Corners4& cornerX,
                   const Corners4& cornerY, ElementMatrix& Ke) {
  // Element freedom of each triangle freedom 1..11; vertex 3 of every triangle
  // is the centre, sides 1 and 2 are the inner sides.
  static constexpr int kMap[4][11] = {
      {1, 2, 3, 4, 5, 6, 13, 14, 15, 17, 16},
      {4, 5, 6, 7, 8, 9, 13, 14, 15, 18, 17},
      {7, 8, 9, 10, 11, 12, 13, 14, 15, 19, 18},
      {10, 11, 12, 1, 2, 3, 13, 14, 15, 16, 19},
  };

  Ke.Clear();
  const double xc = (cornerX[0] + cornerX[1] + cornerX[2] + cornerX[3]) / 4.0;
  const double yc = (cornerY[0] + cornerY[1] + cornerY[2] + cornerY[3]) / 4.0;

  TriangleMatrix T;
  for (int t = 0; t < 4; ++t) {
    const int n = (t + 1) % 4;
    Triangle_Bending(E, nu, thick, thick, thick, cornerX[t], cornerX[n], xc, cornerY[t], cornerY[n],
                     yc, T, 11);
    // Each inner side is shared by two triangles that run along it in opposite
    // directions; turning the sign of one slope makes both mean the same thing.
    for (int m = 1; m <= 10; ++m) {
      T(11, m) = -T(11, m);
      T(m, 11) = -T(m, 11);
    }
    for (int i = 1; i <= 11; ++i)
      for (int j = i; j <= 11; ++j) {
        const int p = kMap[t][i - 1];
        const int q = kMap[t][j - 1];
        Ke(p, q) = Ke(p, q) + T(i, j);
        Ke(q, p) = Ke(p, q);
      }
  }

  // Condense the centre and the inner slopes, keeping the 12 corner freedoms.
  for (int m = 19; m >= 13; --m) {
    const int n = m - 1;
    const double d = Ke(m, m);
    for (int i = 1; i <= n; ++i) {
      const double f = Div(Ke(i, m), d);
      Ke(i, m) = f;
      for (int j = i; j <= n; ++j) {
        Ke(i, j) = Finite(Ke(i, j) - f * Ke(m, j));
        Ke(j, i) = Ke(i, j);
      }
    }
  }
}

} // namespace velk
