#pragma once
// The working arrays of one run, numbered from 1 as the formulas number them.
// Every access is checked: a node or element number beyond the arrays is a
// subscript fault that ends the run, never a stray write.
#include <cstddef>
#include <vector>

#include "common/Fault.h"
#include "common/TextRules.h"

namespace velk {

template <class T> class Array1 {
public:
  Array1() = default;
  explicit Array1(long size) { Resize(size); }
  void Resize(long size) {
    if (size < 0) Raise(errSubscript);
    v_.assign(static_cast<std::size_t>(size), T{});
  }
  long Size() const { return static_cast<long>(v_.size()); }
  T& operator[](long i) { return v_[Index(i)]; }
  const T& operator[](long i) const { return v_[Index(i)]; }
  // The whole array as a vector, element i at index i - 1.
  std::vector<T>& Data() { return v_; }
  const std::vector<T>& Data() const { return v_; }

private:
  std::size_t Index(long i) const {
    if (i < 1 || i > Size()) Raise(errSubscript, "subscript out of range");
    return static_cast<std::size_t>(i - 1);
  }
  std::vector<T> v_;
};

// rows x columns, indexed (row, column): connectivity is (corner, element).
template <class T> class Array2 {
public:
  Array2() = default;
  Array2(long rows, long columns) { Resize(rows, columns); }
  void Resize(long rows, long columns) {
    if (rows < 0 || columns < 0) Raise(errSubscript);
    rows_ = rows;
    columns_ = columns;
    v_.assign(static_cast<std::size_t>(rows * columns), T{});
  }
  long Rows() const { return rows_; }
  long Columns() const { return columns_; }
  T& operator()(long r, long c) { return v_[Index(r, c)]; }
  const T& operator()(long r, long c) const { return v_[Index(r, c)]; }

private:
  std::size_t Index(long r, long c) const {
    if (r < 1 || r > rows_ || c < 1 || c > columns_) Raise(errSubscript, "subscript out of range");
    return static_cast<std::size_t>((c - 1) * rows_ + (r - 1));
  }
  long rows_ = 0, columns_ = 0;
  std::vector<T> v_;
};

// What the deck's geometry and element blocks fill.
struct RunArrays {
  Array1<double> X, Y;       // point coordinates
  Array2<Integer> plateConn; // 4 x plates
  Array1<double> plateThick;
  Array2<Integer> stiffConn; // 2 x stiffeners
  Array1<double> stiffThick, stiffWidth;

  // Sized for `rows` point entries, `plates` and `stiffeners` elements; an
  // empty class gets one row so that a model without it runs on.
  void Size(long rows, long plates, long stiffeners) {
    X.Resize(rows);
    Y.Resize(rows);
    const long q = plates > 0 ? plates : 1;
    const long s = stiffeners > 0 ? stiffeners : 1;
    plateConn.Resize(4, q);
    plateThick.Resize(q);
    stiffConn.Resize(2, s);
    stiffThick.Resize(s);
    stiffWidth.Resize(s);
  }
};

} // namespace velk
