// Mean and variance as exact arithmetic gives them, but for a last digit now and then: what is
// summed up has the 64 bits of a long double, and each rounding of a sum is summed up, too.
#pragma once

#include <algorithm>
#include <cmath>

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

/// The weights of observations.
struct WeightSums {
  ExactSum first, squares;

  void add(long double w) {
    first.add(w);
    squares.add(w * w);
  }
};

/// Of one variable, as its deviations from an origin that lies among the values.
struct DeviationSums {
  ExactSum first, squares;

  void add(long double d, long double w) {
    first.add(w * d);
    squares.add(w * (d * d));
  }
  double mean(double origin, const WeightSums& w) const {
    return static_cast<double>(origin + first.value() / w.first.value());
  }
  /// Over W - W2 / W, as covariances are.
  long double variance(const WeightSums& w) const {
    const long double W = w.first.value(), sum = first.value();
    const long double scatter = squares.value() - sum * (sum / W);
    return std::max(scatter, 0.0L) / (W - w.squares.value() / W);
  }
};

}  // namespace orv_cli
