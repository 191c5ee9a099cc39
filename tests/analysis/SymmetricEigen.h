#pragma once
// Test support: eigenvalues of a small dense symmetric matrix by cyclic Jacobi
// rotations, and a few dense helpers for checking element and band matrices.
#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

#include "FaultOf.h"
#include "analysis/ElementMatrix.h"

namespace velk::test {

using Dense = std::vector<std::vector<double>>;
using Vector = std::vector<double>;

// The leading n x n block of an element matrix.
inline Dense Leading(const ElementMatrix& K, int n) {
  Dense a(n, Vector(n));
  for (int i = 0; i < n; ++i)
    for (int j = 0; j < n; ++j)
      a[i][j] = K(i + 1, j + 1);
  return a;
}

// Eigenvalues in ascending order. The matrix is symmetrised first.
inline Vector SymmetricEigenvalues(Dense a) {
  const int n = static_cast<int>(a.size());
  for (int i = 0; i < n; ++i)
    for (int j = i + 1; j < n; ++j)
      a[i][j] = a[j][i] = 0.5 * (a[i][j] + a[j][i]);
  for (int sweep = 0; sweep < 100; ++sweep) {
    double off = 0.0, scale = 0.0;
    for (int i = 0; i < n; ++i)
      for (int j = 0; j < n; ++j)
        (i == j ? scale : off) += a[i][j] * a[i][j];
    if (off <= 1e-30 * scale) break;
    for (int p = 0; p < n - 1; ++p)
      for (int q = p + 1; q < n; ++q) {
        if (a[p][q] == 0.0) continue;
        const double theta = (a[q][q] - a[p][p]) / (2.0 * a[p][q]);
        const double t = (theta >= 0 ? 1.0 : -1.0) / (std::abs(theta) + std::hypot(theta, 1.0));
        const double c = 1.0 / std::hypot(t, 1.0), s = t * c;
        for (int k = 0; k < n; ++k) { // columns p, q, then rows p, q
          const double akp = a[k][p], akq = a[k][q];
          a[k][p] = c * akp - s * akq;
          a[k][q] = s * akp + c * akq;
        }
        for (int k = 0; k < n; ++k) {
          const double apk = a[p][k], aqk = a[q][k];
          a[p][k] = c * apk - s * aqk;
          a[q][k] = s * apk + c * aqk;
        }
      }
  }
  Vector values(n);
  for (int i = 0; i < n; ++i)
    values[i] = a[i][i];
  std::sort(values.begin(), values.end());
  return values;
}

inline Vector Multiply(const Dense& a, const Vector& x) {
  Vector y;
  for (const auto& row : a)
    y.push_back(std::inner_product(x.begin(), x.end(), row.begin(), 0.0));
  return y;
}
// Half of u K u: the energy of a displacement.
inline double Energy(const Dense& K, const Vector& u) {
  const Vector Ku = Multiply(K, u);
  return 0.5 * std::inner_product(u.begin(), u.end(), Ku.begin(), 0.0);
}
inline double MaxAbs(const Vector& x) {
  double m = 0.0;
  for (double v : x)
    m = std::max(m, std::abs(v));
  return m;
}
inline double MaxAbs(const Dense& a) {
  double m = 0.0;
  for (const auto& row : a)
    m = std::max(m, MaxAbs(row));
  return m;
}
// Largest |a(i,j) - a(j,i)|.
inline double Asymmetry(const Dense& a) {
  double m = 0.0;
  for (std::size_t i = 0; i < a.size(); ++i)
    for (std::size_t j = 0; j < i; ++j)
      m = std::max(m, std::abs(a[i][j] - a[j][i]));
  return m;
}

} // namespace velk::test
