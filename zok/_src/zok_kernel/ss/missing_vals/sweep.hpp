// SPDX-License-Identifier: MIT
// Regressions of missing variables on observed ones, by sweeping (Beaton 1964).
//
// The parameters are one symmetric matrix G of order p + 1: G(0, 0) is -1, G(0, j) the mean of
// variable j, counted from 1, and G(i, j) a covariance. Swept in on the observed variables, its
// rows of the missing ones hold intercepts, coefficients and the covariance that remains. The sign
// of a diagonal element tells whether it has been swept in.
#pragma once

#include "../../../zok_sub_kernel/_service/lanes.hpp"
#include "patterns.hpp"

namespace orv {
inline namespace ORV_TAG {

using Wide = Lanes<double>;

/// Rows of order p + 1 are padded with zeros to whole vectors.
inline intptr_t stride_of(intptr_t p) {
  return (p + 1 + Wide::count - 1) / Wide::count * Wide::count;
}

/// y += f x
inline void add_scaled(intptr_t stride, double f, const double* x, double* y) {
  const auto factor = Wide::all(f);
  for (intptr_t j = 0; j < stride; j += Wide::count) {
    Wide::store(y + j, Wide::load(y + j) + factor * Wide::load(x + j));
  }
}

inline double dot(intptr_t stride, const double* x, const double* y) {
  auto sum = Wide::all(0);
  for (intptr_t j = 0; j < stride; j += Wide::count) sum += Wide::load(x + j) * Wide::load(y + j);
  return (sum[0] + sum[1]) + (sum[2] + sum[3]);
}

/// Sweeps on the element at (row, column), which is on the diagonal of the matrix that these rows
/// are of: in with sign -1, out with +1. Whole rows are one symmetric matrix; in a part of the
/// rows, the column stands for the elements that symmetry puts there.
inline void _vSSSweepOperator(intptr_t rows, intptr_t stride, double* g, intptr_t row,
                              intptr_t column, double sign) {
  double* const pivot = g + row * stride;
  const double d = -1 / pivot[column], s = sign * d;
  for (intptr_t i = 0; i < rows; ++i) {
    if (i == row) continue;
    double* const other = g + i * stride;
    const double element = other[column];
    add_scaled(stride, element * d, pivot, other);
    other[column] = element * s;
  }
  const auto scale = Wide::all(s);
  for (intptr_t j = 0; j < stride; j += Wide::count) {
    Wide::store(pivot + j, Wide::load(pivot + j) * scale);
  }
  pivot[column] = d;
}

/// Regressions under one G, for one pattern after another.
class Regression {
 public:
  Regression() = default;
  Regression(const Regression&) = delete;
  Regression& operator=(const Regression&) = delete;
  ~Regression() {
    orv_serv_deallocate(matrices_);
    orv_serv_deallocate(index_);
  }

  int32_t allocate_for(intptr_t p) {
    p_ = p;
    stride_ = stride_of(p);
    const Count matrix = Count(p + 1) * stride_;
    matrices_ = allocate_zeros<double>(5 * matrix);
    index_ = allocate<int32_t>(2 * Count(p) + 1);
    if (matrices_ == nullptr || index_ == nullptr) return SS_NO_MEMORY;
    G = matrices_;
    double** const others[] = {&all_in_, &rows_, &coefficients_, &remaining_};
    double* at = matrices_;
    for (double** const other : others) *other = at += matrix.value;
    return SS_OK;
  }

  /// To be called when G has changed.
  void prepare() {
    copy(G, all_in_);
    has_all_in_ = true;
    for (intptr_t j = 1; j <= p_ && has_all_in_; ++j) has_all_in_ = sweep_in(all_in_, j);
  }

  /// Regresses the variables that a pattern misses on those it has.
  void regress(const Pattern& pattern) {
    _vSSGetPatternIdx(pattern);
    const intptr_t m = missing_count, with = p_ - m;
    // Whichever is less work: out on the missing, in their rows alone, or in on the observed.
    if (has_all_in_ && m * m <= with * (p_ + 1)) {
      for (intptr_t a = 0; a < m; ++a) copy_row(all_in_, missing(a), a);
      for (intptr_t a = 0; a < m; ++a) {
        _vSSSweepOperator(m, stride_, rows_, a, missing(a), 1);
      }
    } else {
      double* const g = remaining_;  // not needed before the end
      copy(G, g);
      for (intptr_t k = 1; k <= with; ++k) sweep_in(g, observed(k));
      for (intptr_t a = 0; a < m; ++a) copy_row(g, missing(a), a);
      for (intptr_t k = 1; k <= with; ++k) {  // no pivot, no part in the regressions
        const intptr_t j = observed(k);
        for (intptr_t a = 0; a < m && !(g[j * stride_ + j] < 0); ++a) rows_[a * stride_ + j] = 0;
      }
    }
    split_rows();
  }

  /// Row a, of p + 1 and padding: intercept and coefficients of the a-th missing variable; 0 for
  /// all that are missing.
  const double* coefficients(intptr_t a) const { return coefficients_ + a * stride_; }
  /// What covariance remains of the a-th and the b-th.
  double remaining(intptr_t a, intptr_t b) const { return remaining_[a * missing_count + b]; }
  const double* remaining() const { return remaining_; }

  /// Indices in G of the a-th missing variable, and of the k-th observed one, the constant being
  /// number 0.
  int32_t missing(intptr_t a) const { return index_[a]; }
  int32_t observed(intptr_t k) const { return index_[p_ + k]; }
  int32_t missing_count = 0;

  double* G = nullptr;

 private:
  size_t bytes() const { return static_cast<size_t>((p_ + 1) * stride_) * sizeof(double); }
  void copy(const double* from, double* to) const { memcpy(to, from, bytes()); }
  void copy_row(const double* from, intptr_t row, intptr_t a) const {
    memcpy(rows_ + a * stride_, from + row * stride_, static_cast<size_t>(stride_) * sizeof *from);
  }

  /// False for what is no pivot: no more of the variance is left than rounding makes.
  bool sweep_in(double* g, intptr_t j) const {
    constexpr double rounding = 0x1p-44;
    if (!(g[j * stride_ + j] > rounding * G[j * stride_ + j])) return false;
    _vSSSweepOperator(p_ + 1, stride_, g, j, j, -1);
    return true;
  }

  void _vSSGetPatternIdx(const Pattern& pattern) {
    int32_t* next_observed = index_ + p_;
    missing_count = 0;
    *next_observed++ = 0;
    for (int32_t j = 0; j < p_; ++j) {
      (is_observed(pattern, j) ? *next_observed++ : index_[missing_count++]) = j + 1;
    }
  }

  void split_rows() {
    const intptr_t m = missing_count;
    for (intptr_t a = 0; a < m; ++a) {
      const double* const row = rows_ + a * stride_;
      double* const b = coefficients_ + a * stride_;
      memcpy(b, row, static_cast<size_t>(stride_) * sizeof *b);
      for (intptr_t c = 0; c < m; ++c) {
        remaining_[a * m + c] = row[missing(c)];
        b[missing(c)] = 0;
      }
    }
  }

  intptr_t p_ = 0, stride_ = 0;
  double* matrices_ = nullptr;
  double *all_in_ = nullptr, *rows_ = nullptr, *coefficients_ = nullptr, *remaining_ = nullptr;
  int32_t* index_ = nullptr;
  bool has_all_in_ = false;
};

}  // namespace ORV_TAG
}  // namespace orv
