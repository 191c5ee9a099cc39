#pragma once
// The scratch matrix that every element routine fills. Its size is that of the
// largest element before condensation (the 19 freedoms of the bending
// quadrilateral), so one instance serves every element of a run and no element
// allocates. Indexes run from 1, as in the element formulas.
#include <array>

namespace velk {

class ElementMatrix {
public:
  static constexpr int kSize = 19;

  double& operator()(int i, int j) { return a_[(i - 1) * kSize + (j - 1)]; }
  double operator()(int i, int j) const { return a_[(i - 1) * kSize + (j - 1)]; }

  void Clear() { a_.fill(0.0); }
  // Clears the leading n x n block only.
  void ClearCorner(int n) {
    for (int i = 1; i <= n; ++i)
      for (int j = 1; j <= n; ++j)
        (*this)(i, j) = 0.0;
  }

private:
  std::array<double, kSize * kSize> a_{};
};

} // namespace velk
