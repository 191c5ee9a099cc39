// Node grids between four corners: even columns, or columns graded so that the
// element length follows the local depth of a tapered girder.
#include "model/Nodes.h"

#include <cmath>
#include <string>

namespace velk {

namespace {

// One column of NY nodes from (xb, yb) to (xt, yt), evenly divided.
void AddColumn(Nodes& nodes, double xb, double yb, double xt, double yt, Long NY, Long& n) {
  const Single v = static_cast<Single>(NY - 1);
  for (Long j = 1; j <= NY; ++j) {
    const Single u = static_cast<Single>(j - 1);
    ++n;
    Single x = static_cast<Single>(xb + u * (xt - xb) / v);
    Single y = static_cast<Single>(yb + u * (yt - yb) / v);
    nodes.Add(x, y, n, std::to_string(n));
  }
}

void EvenColumns(Nodes& nodes, Single X1, Single Y1, Single X2, Single Y2, Single X3, Single Y3,
                 Single X4, Single Y4, Long firstColumn, Long NX, Long NY) {
  Long n = 0;
  const Single m = static_cast<Single>(NX - 1);
  for (Long i = firstColumn; i <= NX; ++i) {
    const Single s = static_cast<Single>(i - 1);
    // Each end point is a Single, as the grid stores it.
    Single xb = static_cast<Single>(s * (double(X3) - X1) / m + X1);
    Single yb = static_cast<Single>(s * (double(Y3) - Y1) / m + Y1);
    Single xt = static_cast<Single>(s * (double(X4) - X2) / m + X2);
    Single yt = static_cast<Single>(s * (double(Y4) - Y2) / m + Y2);
    AddColumn(nodes, xb, yb, xt, yt, NY, n);
  }
}

} // namespace

void Nodes::Generate(Single X1, Single Y1, Single X2, Single Y2, Single X3, Single Y3, Single X4,
                     Single Y4, Long NX, Long NY) {
  mCol.Reserve(static_cast<std::size_t>(NX) * static_cast<std::size_t>(NY));
  EvenColumns(*this, X1, Y1, X2, Y2, X3, Y3, X4, Y4, 1, NX, NY);
}

void Nodes::AddGenerate(Single X1, Single Y1, Single X2, Single Y2, Single X3, Single Y3, Single X4,
                        Single Y4, Long NX, Long NY) {
  EvenColumns(*this, X1, Y1, X2, Y2, X3, Y3, X4, Y4, 2, NX, NY);
}

void Nodes::GenerateProportional(Single X1, Single Y1, Single X2, Single Y2, Single X3, Single Y3,
                                 Single X4, Single Y4, Long NX, Long NY) {
  mCol.Reserve(static_cast<std::size_t>(NX) * static_cast<std::size_t>(NY));
  // Successive element lengths grow by r, so that the last element is to the
  // first as the depth at the last column is to the depth at the first. With a
  // single element there is no series: the two end columns are the grid.
  const double depthRatio = (double(Y4) - Y3) / (double(Y2) - Y1);
  const double r = NX > 2 ? std::exp(std::log(depthRatio) / (NX - 2)) : 1.0;
  const double rLast = std::pow(r, NX - 1);
  Long n = 0;
  for (Long i = 1; i <= NX; ++i) {
    double f;
    if (i == 1)
      f = 0;
    else if (i == NX)
      f = 1;
    else
      f = (1 - std::pow(r, i - 1)) / (1 - rLast);
    double xb = f * (double(X3) - X1) + X1;
    double yb = f * (double(Y3) - Y1) + Y1;
    double xt = f * (double(X4) - X2) + X2;
    double yt = static_cast<Single>(f * (double(Y4) - Y2) + Y2);
    AddColumn(*this, xb, yb, xt, yt, NY, n);
  }
}

} // namespace velk
