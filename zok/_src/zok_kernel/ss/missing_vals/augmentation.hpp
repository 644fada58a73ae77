// SPDX-License-Identifier: MIT
// Data augmentation (Tanner and Wong 1987; Schafer 1997): missing values are drawn given mean and
// covariance, then these given the completed data, in turn.
#pragma once

#include <orv/zok.h>

#include "moments.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class T>
struct Draws;

template <>
struct Draws<double> {
  static constexpr auto gaussian = _zokdRngGaussian;
  static constexpr auto gaussian_mv = _zokdRngGaussianMV;
};

template <>
struct Draws<float> {
  static constexpr auto gaussian = _zoksRngGaussian;
  static constexpr auto gaussian_mv = _zoksRngGaussianMV;
};

constexpr int32_t inversion = 2;  // the method of both

/// A normal-inverse-Wishart law of mean and covariance: given the covariance, the mean has 1 / tau
/// of it about `mean`. Without a prior all is 0, and the mean counts as one degree of freedom.
template <class T>
struct Prior {
  const T* mean = nullptr;
  const T* scale = nullptr;  // packed
  double tau = 0, df = 0;

  static Prior of(const SSTask& task, intptr_t p) {
    const auto* from = static_cast<const T*>(task.prior);
    const int64_t count = integer(task, task.prior_count);
    Prior prior;
    if (from == nullptr || count < (int64_t{p} * (p + 3) + 4) / 2) return prior;
    prior.mean = from;
    prior.tau = from[p] > 0 ? static_cast<double>(from[p]) : 0;
    prior.df = trunc(static_cast<double>(from[p + 1]));
    if (!(prior.df >= static_cast<double>(p))) prior.df = static_cast<double>(p);
    prior.scale = from + p + 2;
    return prior;
  }
};

template <class T>
class DataAugmentation {
 public:
  DataAugmentation(const Rows& rows, Regression* regression, const Prior<T>& prior,
                   StreamState* stream)
      : rows_(rows), regression_(*regression), prior_(prior), stream_(stream) {}
  DataAugmentation(const DataAugmentation&) = delete;
  DataAugmentation& operator=(const DataAugmentation&) = delete;
  ~DataAugmentation() {
    orv_serv_deallocate(work_);
    orv_serv_deallocate(draws_);
  }

  int32_t _vSSInitDAMethod() {
    const intptr_t p = rows_.p;
    const Count matrix = Count(p + 1) * rows_.stride, square = Count(p) * p;
    work_ = allocate_zeros<double>(3 * matrix + 3 * square + Count(p) * (block + 1));
    draws_ = allocate_zeros<T>(Count(p) * (block + 2) + square + most_at_once);
    if (work_ == nullptr || draws_ == nullptr) return SS_NO_MEMORY;
    double* at = work_;
    const auto take = [&](Count count) {
      double* const array = at;
      at += count.value;
      return array;
    };
    estimate_ = take(matrix), sums_ = take(matrix), complete_ = take(matrix);
    scatter_ = take(square), bartlett_ = take(square), covariance_ = take(square);
    conditional_ = take(Count(p) * block), normal_ = take(p);
    deviations_ = draws_;
    zeros_ = deviations_ + p * block;
    numbers_ = zeros_ + p;
    factor_ = numbers_ + (p > most_at_once ? p : most_at_once);
    for (const Pattern& pattern : rows_.patterns) {
      if (pattern.missing == 0) rows_.add_products(pattern.first, pattern.count, complete_);
    }
    keep(regression_.G, estimate_);
    return SS_OK;
  }

  /// Each imputation begins with the EM estimate.
  void begin() { keep(estimate_, regression_.G); }

  /// Completes the rows and draws new parameters G.
  int32_t iterate() {
    const int32_t status = _vSSDAMethodIStep();
    return status == SS_OK ? draw_parameters() : status;
  }

 private:
  static constexpr int32_t block = 256;          // observations at a time
  static constexpr int32_t most_at_once = 1024;  // normal numbers

  void keep(const double* from, double* to) const {
    memcpy(to, from, static_cast<size_t>((rows_.p + 1) * rows_.stride) * sizeof *from);
  }

  int32_t _vSSDAMethodIStep() {
    keep(complete_, sums_);
    regression_.prepare();
    for (const Pattern& pattern : rows_.patterns) {
      if (pattern.missing == 0) continue;
      const int32_t status = complete_pattern(pattern);
      if (status != SS_OK) return status;
    }
    mirror(rows_.p, rows_.stride, sums_);
    _vSSSweepOperator(rows_.p + 1, rows_.stride, sums_, 0, 0, -1);
    return SS_OK;
  }

  int32_t complete_pattern(const Pattern& pattern) {
    regression_.regress(pattern);
    const int32_t m = pattern.missing;
    memcpy(covariance_, regression_.remaining(), sizeof(double) * static_cast<size_t>(m) * m);
    if (potrf('u', m, covariance_, m) != 0) return SS_CONDITIONAL_NOT_POSITIVE;
    for (intptr_t k = 0; k < intptr_t{m} * m; ++k) factor_[k] = static_cast<T>(covariance_[k]);
    for (intptr_t done = 0; done < pattern.count; done += block) {
      const intptr_t left = pattern.count - done;
      const auto count = static_cast<int32_t>(left < block ? left : block);
      const int32_t status = complete_rows(pattern.first + done, count, m);
      if (status != SS_OK) return status;
    }
    rows_.add_products(pattern.first, pattern.count, sums_);
    return SS_OK;
  }

  int32_t complete_rows(intptr_t first, int32_t count, int32_t m) {
    const auto stride = static_cast<int32_t>(rows_.stride);
    gemm('t', 'n', m, count, stride, 1.0, regression_.coefficients(0), stride, rows_.row(first),
         stride, 0.0, conditional_, m);
    // About 0: the same deviates as one call for each observation with its own mean would give.
    if (Draws<T>::gaussian_mv(inversion, stream_, count, deviations_, m, RNG_STORAGE_FULL, zeros_,
                              factor_) < 0) {
      return SS_IMPUTATION_FAILED;
    }
    for (intptr_t i = 0; i < count; ++i) {
      double* const row = rows_.row(first + i);
      for (intptr_t a = 0; a < m; ++a) {
        const intptr_t j = regression_.missing(a);
        const double shift = rows_.shift(j - 1);
        const double x = conditional_[i * m + a] + static_cast<double>(deviations_[i * m + a]);
        row[j] = static_cast<double>(static_cast<T>(x + shift)) - shift;  // as it is delivered
      }
    }
    return SS_OK;
  }

  // ---- The posterior law ------------------------------------------------------------------------

  /// Draws `count` standard normal numbers and calls f(number of the first, how many).
  template <class F>
  int32_t draw(int64_t count, F f) {
    for (int64_t done = 0; done < count; done += most_at_once) {
      const auto now =
          static_cast<int32_t>(count - done < most_at_once ? count - done : most_at_once);
      const int32_t status = Draws<T>::gaussian(inversion, stream_, now, numbers_, T(0), T(1));
      if (status < 0) return SS_POSTERIOR_FAILED;
      f(done, now);
    }
    return SS_OK;
  }

  /// An upper triangle A, stored by columns, such that A' A has a Wishart law of unit scale:
  /// squares of the diagonal have df, df - 1, ... degrees of freedom (Bartlett 1933).
  int32_t draw_bartlett(int64_t df) {
    const auto p = static_cast<int32_t>(rows_.p);
    for (int64_t i = 0; i < p; ++i) {
      double squares = 0;
      const int64_t of_diagonal = df - i;
      if (of_diagonal < 1) return SS_POSTERIOR_FAILED;
      const int32_t status = draw(of_diagonal + p - 1 - i, [&](int64_t first, int32_t count) {
        for (int32_t k = 0; k < count; ++k) {
          const auto z = static_cast<double>(numbers_[k]);
          const int64_t right = first + k - of_diagonal;
          if (right < 0) {
            squares += z * z;
          } else {
            bartlett_[i + (i + 1 + right) * p] = z;
          }
        }
      });
      if (status != SS_OK) return status;
      bartlett_[i + i * p] = sqrt(squares);
    }
    return SS_OK;
  }

  /// Scatter, mean and weight of the posterior: those of the completed data and the prior's.
  double update_by_prior(double* mean) {
    const intptr_t p = rows_.p, stride = rows_.stride;
    const auto n = static_cast<double>(rows_.n);
    const MatrixStorage packed(SS_MATRIX_UPPER_PACKED, p);
    const double weight = n + prior_.tau;
    for (intptr_t j = 0; j < p; ++j) mean[j] = sums_[j + 1];
    for (intptr_t j = 0; j < p; ++j) {
      for (intptr_t i = j; i < p; ++i) {
        double s = sums_[(i + 1) * stride + j + 1];
        if (prior_.mean != nullptr) {
          s += static_cast<double>(prior_.scale[packed.place(j, i)]) +
               n * prior_.tau / weight * from_prior(mean, i) * from_prior(mean, j);
        }
        scatter_[i + j * p] = s;
      }
      for (intptr_t i = 0; i < j; ++i) scatter_[i + j * p] = 0;  // for trmm
    }
    for (intptr_t j = 0; j < p && prior_.mean != nullptr; ++j) {
      mean[j] -= prior_.tau / weight * from_prior(mean, j);
    }
    return weight;
  }
  double from_prior(const double* mean, intptr_t j) const {
    return mean[j] - (static_cast<double>(prior_.mean[j]) - rows_.shift(j));
  }

  /// With L the factor of the scatter, L inv(A) is one of the drawn covariance.
  int32_t draw_parameters() {
    const auto p = static_cast<int32_t>(rows_.p);
    const auto stride = static_cast<int32_t>(rows_.stride);
    double* const G = regression_.G;
    double* const mean = normal_;
    const double weight = update_by_prior(mean);
    const int64_t of_mean = prior_.tau > 0 ? 0 : 1;
    const int64_t df = int64_t{rows_.n} - of_mean + static_cast<int64_t>(prior_.df);
    if (const int32_t status = draw_bartlett(df); status != SS_OK) return status;
    if (potrf('l', p, scatter_, p) != 0) return SS_POSTERIOR_FAILED;
    if (trtri('u', 'n', p, bartlett_, p) != 0) return SS_POSTERIOR_FAILED;
    trmm('r', 'u', 'n', 'n', p, p, 1.0, bartlett_, p, scatter_, p);
    syrk('u', 'n', p, p, 1.0, scatter_, p, 0.0, covariance_, p);

    double* const z = conditional_;
    const int32_t status = draw(p, [&](int64_t first, int32_t count) {
      for (int32_t k = 0; k < count; ++k) z[first + k] = static_cast<double>(numbers_[k]);
    });
    if (status != SS_OK) return status;
    gemv('n', p, p, 1 / sqrt(weight), scatter_, p, z, 1.0, mean);
    for (intptr_t j = 1; j <= p; ++j) {
      G[j] = G[j * stride] = mean[j - 1];
      for (intptr_t i = 1; i <= j; ++i) {
        G[i * stride + j] = G[j * stride + i] = covariance_[(i - 1) + (j - 1) * p];
      }
    }
    return SS_OK;
  }

  const Rows& rows_;
  Regression& regression_;
  Prior<T> prior_;
  StreamState* stream_;
  double *work_ = nullptr, *estimate_ = nullptr, *sums_ = nullptr, *complete_ = nullptr;
  double *scatter_ = nullptr, *bartlett_ = nullptr, *covariance_ = nullptr;
  double *conditional_ = nullptr, *normal_ = nullptr;
  T *draws_ = nullptr, *deviations_ = nullptr, *zeros_ = nullptr, *numbers_ = nullptr;
  T* factor_ = nullptr;
};

}  // namespace ORV_TAG
}  // namespace orv
