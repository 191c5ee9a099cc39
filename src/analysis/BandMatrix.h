#pragma once
// Symmetric matrices of the analysis, stored as their upper band, and the four
// operations on that storage: adding an element matrix, prescribing a freedom,
// factoring and solving; plus the product with a vector that the eigenvalue
// iteration needs. Factoring never exchanges rows, so the shifted matrices of
// the iteration, which are not positive definite, go through the same code.
//
// Numbering follows the formulas: rows r = 1..R, band columns b = 1..B, entry
// (r, b) holds row r, column r + b - 1 of the full matrix; (r, 1) is the
// diagonal. Freedom numbers are 1-based too; a vector passed as a span holds
// freedom k at index k - 1.
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <span>
#include <utility>

#include "analysis/ElementMatrix.h"

namespace velk {

class BandMatrix {
public:
  BandMatrix() = default;
  // R rows by B band columns, all zero.
  BandMatrix(int rows, int columns);
  BandMatrix(const BandMatrix& other);
  BandMatrix& operator=(const BandMatrix& other);
  // A matrix moved from is empty.
  BandMatrix(BandMatrix&& other) noexcept { *this = std::move(other); }
  BandMatrix& operator=(BandMatrix&& other) noexcept {
    rows_ = std::exchange(other.rows_, 0);
    columns_ = std::exchange(other.columns_, 0);
    data_ = std::move(other.data_);
    return *this;
  }

  int Rows() const { return rows_; }
  int Columns() const { return columns_; }

  // Row by row, so that one row of the band lies contiguous in memory: the
  // factoring sweeps pivot rows from end to end.
  double& operator()(int r, int b) { return data_[Index(r, b)]; }
  double operator()(int r, int b) const { return data_[Index(r, b)]; }
  double* Row(int r) { return data_.get() + Index(r, 1); }
  const double* Row(int r) const { return data_.get() + Index(r, 1); }

private:
  std::size_t Index(int r, int b) const {
    return static_cast<std::size_t>(r - 1) * static_cast<std::size_t>(columns_) +
           static_cast<std::size_t>(b - 1);
  }
  std::size_t Size() const {
    return static_cast<std::size_t>(rows_) * static_cast<std::size_t>(columns_);
  }

  struct Free {
    void operator()(double* p) const { std::free(p); }
  };
  int rows_ = 0;
  int columns_ = 0;
  std::unique_ptr<double[], Free> data_;
};

// What the assembly met when a freedom lay beyond the rows or an entry beyond
// the band: the row's freedom number and the last band column computed (0 when
// none was). The caller lists it, shows its message and ends the run.
struct BandOverflow {
  int dof = 0;
  int band = 0;
};

// Adds the top left count x count of Ke (count = dofs.size()) at the global
// freedoms dofs[0..count-1]; only the upper triangle is stored, so freedoms may
// come in any order. `bw` grows to the largest band column met, and is raised
// before that column is tested against B, so after an overflow it holds the
// value that failed. On overflow the element's assembly stops where it was and
// the overflow is returned; entries already added stay.
std::optional<BandOverflow> Band_Assemble(const ElementMatrix& Ke, BandMatrix& M, int& bw,
                                          std::span<const std::int16_t> dofs);

// Fixes freedom `dof` to `value`: moves the column's and the row's coupling
// terms to the right-hand side F (size >= R), clears them, keeping the matrix
// symmetric, and puts 1 on the diagonal (diagonalMode 2) or 0 (diagonalMode 1).
void Band_Prescribe(BandMatrix& M, std::span<double> F, int dof, double value, int bw,
                    int diagonalMode);

// Factors rows 1..n in place, without square roots and without row exchange:
// (i, 1) becomes the pivot d(i) and (i, j) becomes d(i) * L(i + j - 1, i). A zero
// pivot is a division by zero (0/0 an overflow); an overflow is an overflow.
// The elimination runs in blocks of pivots with vector arithmetic: it takes the
// same terms as the row-by-row elimination in another order, so the two agree
// to rounding. Band columns beyond bw, columns beyond n and rows beyond n are
// neither read nor written.
void Band_Factor(BandMatrix& M, int n, int bw);

// Band_Factor, and into `ratio` the smallest |d(i)| / |a(i, i)| over rows
// 1..n, a(i, i) being the diagonal before elimination: how many digits the
// elimination lost on its worst row. A row with a zero diagonal counts 0 if
// its pivot is zero too, else not at all. `ratio` is set also when the
// factoring faults: 0 when it stopped on a zero pivot. The factoring itself is
// that of Band_Factor, to the last bit.
void Band_Factor_Measured(BandMatrix& M, int n, int bw, double& ratio);

// Solves with a factored M. f is the right-hand side and is overwritten by the
// forward pass; x receives the solution. x and f may be the same span.
void Band_Solve(const BandMatrix& M, std::span<double> x, std::span<double> f, int n, int bw);

// y = -Kg x on the symmetric band (the sign that the eigenvalue iteration
// wants). x and y must not overlap.
void Band_Multiply(const BandMatrix& Kg, std::span<const double> x, std::span<double> y, int n,
                   int bw);

// A long factoring or solve stops between slices of some tens of
// milliseconds of work and calls the pause set for this thread, if any: the
// run's Cancel checkpoint, which may throw to end the run (the matrix is then
// half factored and good for nothing). A small matrix is one slice and never
// pauses. Returns the pause set before.
using BandPause = void (*)();
BandPause Band_SetPause(BandPause pause);

// The factoring, the solve and the product are built for three instruction
// sets, and the first call of any of them chooses one for the whole process:
// the widest this processor executes, unless the environment variable
// VELK_BAND_KERNEL names another that it executes ("plain", "avx2",
// "avx512"), which is how the tests run each kernel on one machine. Any other
// value is ignored.
enum class BandKernel { Plain, Avx2, Avx512 };
const char* Band_KernelName(BandKernel kernel);
bool Band_KernelRuns(BandKernel kernel); // on this processor
BandKernel Band_Kernel();                // the one in use

} // namespace velk
