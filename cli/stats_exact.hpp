// SPDX-License-Identifier: MIT
// Mean and variance as exact arithmetic gives them, but for a last digit now and then. Sums are
// taken in long doubles, which have 11 bits more, and those that may cancel keep their rounding.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace orv_cli {

/// Compensated after Neumaier (1974).
class ExactSum {
 public:
  void add(long double x) {
    const long double sum = high_ + x, part = sum - high_;
    low_ += (high_ - (sum - part)) + (x - part);
    high_ = sum;
  }
  long double value() const { return high_ + low_; }

 private:
  long double high_ = 0, low_ = 0;
};

/// Observations that are taken at once: enough to sum up in registers, few enough to stay in cache.
inline constexpr size_t exact_together = 64;

/// The weights of observations; all 1 where there are none.
struct ExactWeights {
  ExactSum sum, squares;

  template <class T>
  void add(const T* weights, size_t count) {
    for (size_t i = 0; weights != nullptr && i < count; ++i) {
      const long double w = weights[i];
      sum.add(w);
      squares.add(w * w);
    }
    if (weights != nullptr) return;
    sum.add(static_cast<long double>(count));
    squares.add(static_cast<long double>(count));
  }
};

/// One variable, whose deviations are taken from an origin among its values.
struct ExactMoments {
  ExactSum sum, deviations, squares;

  /// A few observations, each `step` after the one before.
  template <class T>
  void add(const T* x, size_t step, const T* weights, size_t count, T origin) {
    ExactSum of_x = sum;
    long double first = 0, second = 0;
    for (size_t i = 0; i < count; ++i) {
      const long double value = x[i * step], d = value - origin;
      const long double w = weights != nullptr ? weights[i] : 1;
      of_x.add(w * value);
      first += w * d;
      second += w * d * d;
    }
    sum = of_x;
    deviations.add(first);
    squares.add(second);
  }

  double mean(const ExactWeights& w) const {
    return static_cast<double>(sum.value() / w.sum.value());
  }
  /// Over W - W2 / W, as covariances are.
  long double variance(const ExactWeights& w) const {
    const long double W = w.sum.value(), first = deviations.value();
    const long double scatter = squares.value() - first * (first / W);
    return std::max(scatter, 0.0L) / (W - w.squares.value() / W);
  }
};

}  // namespace orv_cli
