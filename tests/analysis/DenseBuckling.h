#pragma once
// Test support: the buckling load factors of assembled band matrices by a
// dense solution, to hold the band iterations and counts against.
#include <algorithm>
#include <cmath>
#include <utility>

#include "SymmetricEigen.h"
#include "analysis/BandMatrix.h"

namespace velk::test {

// The full symmetric matrix of rows 1..n of a band, times sign.
inline Dense Full(const BandMatrix& M, int n, int bw, double sign) {
  Dense a(n, Vector(n, 0.0));
  for (int i = 1; i <= n; ++i)
    for (int b = 1; b <= bw && i + b - 1 <= n; ++b)
      a[i - 1][i + b - 2] = a[i + b - 2][i - 1] = sign * M(i, b);
  return a;
}

// The eigenvalues of K phi = lambda G phi with K positive definite, every
// finite one, by magnitude (positive first among equals): K = L L^T and the
// symmetric L^-1 G L^-T, whose eigenvalues are 1 / lambda.
inline Vector DenseBuckling(const Dense& K, const Dense& G) {
  const int n = static_cast<int>(K.size());
  Dense L(n, Vector(n, 0.0));
  for (int j = 0; j < n; ++j) {
    double d = K[j][j];
    for (int c = 0; c < j; ++c)
      d -= L[j][c] * L[j][c];
    L[j][j] = std::sqrt(d);
    for (int i = j + 1; i < n; ++i) {
      double s = K[i][j];
      for (int c = 0; c < j; ++c)
        s -= L[i][c] * L[j][c];
      L[i][j] = s / L[j][j];
    }
  }
  const auto solveL = [&](const Dense& B) { // L^-1 B, column by column
    Dense X(n, Vector(n, 0.0));
    for (int col = 0; col < n; ++col)
      for (int i = 0; i < n; ++i) {
        double s = B[i][col];
        for (int c = 0; c < i; ++c)
          s -= L[i][c] * X[c][col];
        X[i][col] = s / L[i][i];
      }
    return X;
  };
  Dense W = solveL(G);
  for (int i = 0; i < n; ++i)
    for (int j = 0; j < i; ++j)
      std::swap(W[i][j], W[j][i]);
  Vector lambda;
  const Vector mu = SymmetricEigenvalues(solveL(W));
  const double largest = MaxAbs(mu);
  for (double m : mu)
    if (std::abs(m) > 1e-10 * largest) lambda.push_back(1.0 / m);
  std::sort(lambda.begin(), lambda.end(), [](double a, double b) {
    const double d = std::abs(a) - std::abs(b);
    return std::abs(d) > 1e-6 * std::abs(a) ? d < 0 : a > b;
  });
  return lambda;
}

} // namespace velk::test
