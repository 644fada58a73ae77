// SPDX-License-Identifier: MIT
// The data about a shift, sorted by pattern, and the EM algorithm for mean and covariance of a
// multivariate normal law (Dempster, Laird and Rubin 1977; Little and Rubin 1987).
#pragma once

#include <math.h>

#include "../../../zok_sub_kernel/_service/blas.hpp"
#include "sweep.hpp"

namespace orv {
inline namespace ORV_TAG {

/// What is asked of the algorithms, with the defaults in place.
struct Settings {
  int32_t em_iterations = 50, da_iterations = 30;
  double accuracy = 0.001;
};

/// Observations in the order of their patterns: a row is 1, then the values less a shift, which is
/// the mean of what was observed of each variable. Where a value is missing stands 0, or what has
/// been drawn for it. Sums of products of such rows keep their digits wherever the data lie.
class Rows {
 public:
  Rows() = default;
  Rows(const Rows&) = delete;
  Rows& operator=(const Rows&) = delete;
  ~Rows() {
    orv_serv_deallocate(rows_);
    orv_serv_deallocate(shift_);
  }

  template <class T>
  int32_t fill(const Data<T>& data) {
    n = data.n, p = data.p;
    stride = stride_of(p);
    if (const int32_t status = patterns.find(data); status != SS_OK) return status;
    rows_ = allocate_zeros<double>(Count(n) * stride);
    shift_ = allocate_zeros<double>(p);
    if (rows_ == nullptr || shift_ == nullptr) return SS_NO_MEMORY;
    for (intptr_t j = 0; j < p; ++j) shift_[j] = mean_of_observed(data, j);
    for (intptr_t i = 0; i < n; ++i) {
      double* const to = row(patterns.place(i));
      to[0] = 1;
      for (intptr_t j = 0; j < p; ++j) {
        const T x = data(i, j);
        if (!is_missing(x)) to[1 + j] = static_cast<double>(x) - shift_[j];
      }
    }
    return SS_OK;
  }

  double* row(intptr_t k) const { return rows_ + k * stride; }
  double shift(intptr_t j) const { return shift_[j]; }

  /// T += products of rows, one triangle: element (i, j), i not above j, in row j.
  void add_products(intptr_t first, intptr_t count, double* T) const {
    constexpr intptr_t most = 1 << 20;  // at a time
    for (; count > 0; first += most, count -= most) {
      const auto now = static_cast<int32_t>(count < most ? count : most);
      syrk('u', 'n', static_cast<int32_t>(p + 1), now, 1.0, row(first),
           static_cast<int32_t>(stride), 1.0, T, static_cast<int32_t>(stride));
    }
  }

  intptr_t n, p, stride;
  Patterns patterns;

 private:
  template <class T>
  static double mean_of_observed(const Data<T>& data, intptr_t j) {
    double sum = 0;
    intptr_t count = 0;
    for (intptr_t i = 0; i < data.n; ++i) {
      const T x = data(i, j);
      if (is_missing(x)) continue;
      sum += static_cast<double>(x);
      ++count;
    }
    return count > 0 ? sum / static_cast<double>(count) : 0;
  }

  double* rows_ = nullptr;
  double* shift_ = nullptr;
};

/// Makes the other triangle of what add_products() made.
inline void mirror(intptr_t p, intptr_t stride, double* T) {
  for (intptr_t j = 0; j <= p; ++j) {
    for (intptr_t i = 0; i < j; ++i) T[i * stride + j] = T[j * stride + i];
  }
}

/// Reads G from mean and packed covariance, about the rows' shift; without any, from mean 0 and a
/// unit covariance.
template <class T>
void read_parameters(const Rows& rows, const T* from, double* G) {
  memset(G, 0, static_cast<size_t>((rows.p + 1) * rows.stride) * sizeof *G);
  const MatrixStorage packed(SS_MATRIX_UPPER_PACKED, rows.p);
  const T* const cov = from != nullptr ? from + rows.p : nullptr;
  G[0] = -1;
  for (intptr_t j = 1; j <= rows.p; ++j) {
    double* const row = G + j * rows.stride;
    row[0] = G[j] = (from != nullptr ? static_cast<double>(from[j - 1]) : 0) - rows.shift(j - 1);
    for (intptr_t i = 1; i <= j; ++i) {
      const double c =
          cov == nullptr ? (i == j ? 1 : 0) : static_cast<double>(cov[packed.place(i - 1, j - 1)]);
      row[i] = G[i * rows.stride + j] = c;
    }
  }
}

template <class T>
void write_parameters(const Rows& rows, const double* G, T* to) {
  for (intptr_t j = 0; j < rows.p; ++j) *to++ = static_cast<T>(G[j + 1] + rows.shift(j));
  for (intptr_t i = 1; i <= rows.p; ++i) {
    for (intptr_t j = i; j <= rows.p; ++j) *to++ = static_cast<T>(G[i * rows.stride + j]);
  }
}

class ExpectationMaximization {
 public:
  ExpectationMaximization(const Rows& rows, Regression* regression)
      : rows_(rows), regression_(*regression) {}
  ExpectationMaximization(const ExpectationMaximization&) = delete;
  ExpectationMaximization& operator=(const ExpectationMaximization&) = delete;
  ~ExpectationMaximization() {
    orv_serv_deallocate(work_);
    orv_serv_deallocate(statistics_);
  }

  /// Sums over the observations that don't change. Patterns that many observations have, more than
  /// half the variables, keep a matrix of their products, all together at most twice the data.
  int32_t _vSSComputeObsSufficentStatistics() {
    const intptr_t p = rows_.p, stride = rows_.stride;
    const Count matrix = Count(p + 1) * stride;
    matrix_ = static_cast<intptr_t>(matrix.value);
    intptr_t kept = 0;
    for (const Pattern& pattern : rows_.patterns) kept += keeps_matrix(pattern) ? 1 : 0;
    work_ = allocate_zeros<double>(4 * matrix);
    statistics_ = allocate_zeros<double>(matrix * kept);
    if (work_ == nullptr || statistics_ == nullptr) return SS_NO_MEMORY;
    before_ = work_, observed_ = before_ + matrix_, added_ = observed_ + matrix_;
    products_ = added_ + matrix_;
    double* at = statistics_;
    for (const Pattern& pattern : rows_.patterns) {
      if (!keeps_matrix(pattern)) continue;
      rows_.add_products(pattern.first, pattern.count, at);
      mirror(p, stride, at);
      at += matrix_;
    }
    rows_.add_products(0, rows_.n, observed_);
    return SS_OK;
  }

  /// Improves the regression's G. Returns how many iterations there were.
  int32_t _vSSComputeEMMethod(const Settings& settings) {
    double* const G = regression_.G;
    for (int32_t i = 1; i <= settings.em_iterations; ++i) {
      memcpy(before_, G, static_cast<size_t>(matrix_) * sizeof *G);
      memset(added_, 0, static_cast<size_t>(matrix_) * sizeof *G);
      regression_.prepare();
      const double* statistics = statistics_;
      for (const Pattern& pattern : rows_.patterns) {
        const bool kept = keeps_matrix(pattern);
        if (pattern.missing > 0) _vSSEMMethodEStep(pattern, kept ? statistics : nullptr);
        if (kept) statistics += matrix_;
      }
      maximize(G);
      if (largest_change(G) < settings.accuracy) return i;
    }
    return settings.em_iterations;
  }

 private:
  bool keeps_matrix(const Pattern& pattern) const {
    return pattern.missing > 0 && pattern.count > rows_.p / 2;
  }

  /// Adds what is expected of products with the pattern's missing variables. Of two missing ones
  /// the product goes to the row of the first.
  void _vSSEMMethodEStep(const Pattern& pattern, const double* statistics) {
    const intptr_t stride = rows_.stride;
    regression_.regress(pattern);
    const intptr_t m = pattern.missing, observed = rows_.p - m;
    const auto count = static_cast<double>(pattern.count);
    for (intptr_t a = 0; a < m; ++a) {
      const double* const b = regression_.coefficients(a);
      double* const product = products_;
      memset(product, 0, static_cast<size_t>(stride) * sizeof *product);
      if (statistics != nullptr) {
        for (intptr_t k = 0; k <= observed; ++k) {
          const intptr_t j = regression_.observed(k);
          add_scaled(stride, b[j], statistics + j * stride, product);
        }
      } else {
        for (intptr_t k = 0; k < pattern.count; ++k) {
          const double* const x = rows_.row(pattern.first + k);
          add_scaled(stride, dot(stride, b, x), x, product);
        }
      }
      double* const row = added_ + regression_.missing(a) * stride;
      add_scaled(stride, 1, product, row);
      for (intptr_t c = a; c < m; ++c) {
        row[regression_.missing(c)] +=
            dot(stride, product, regression_.coefficients(c)) + count * regression_.remaining(a, c);
      }
    }
  }

  /// Mean and covariance from expected sums: they are swept on the constant.
  void maximize(double* G) const {
    const intptr_t p = rows_.p, stride = rows_.stride;
    for (intptr_t j = 0; j <= p; ++j) {
      for (intptr_t i = 0; i <= j; ++i) {
        const double other = i < j ? added_[i * stride + j] : 0;
        const double sum = observed_[j * stride + i] + (added_[j * stride + i] + other);
        G[j * stride + i] = G[i * stride + j] = sum;
      }
    }
    _vSSSweepOperator(p + 1, stride, G, 0, 0, -1);
    const double scale = 1 / static_cast<double>(rows_.n);
    for (intptr_t j = 1; j <= p; ++j) {
      for (intptr_t i = 1; i <= p; ++i) G[j * stride + i] *= scale;
    }
    G[0] = -1;
  }

  double largest_change(const double* G) const {
    double largest = 0;
    for (intptr_t k = 1; k < matrix_; ++k) {
      const double change = fabs(G[k] - before_[k]);
      if (isnan(change)) return change;
      if (change > largest) largest = change;
    }
    return largest;
  }

  const Rows& rows_;
  Regression& regression_;
  intptr_t matrix_ = 0;  // elements
  double *work_ = nullptr, *statistics_ = nullptr;
  double *before_ = nullptr, *observed_ = nullptr, *added_ = nullptr, *products_ = nullptr;
};

}  // namespace ORV_TAG
}  // namespace orv
