// SPDX-License-Identifier: MIT
// The logarithm of a probability's ratio to that of the mode, to 10^-11 however large the numbers:
// what cancels is left out before it is computed.
#pragma once

#include <orv/scalar.h>

#include "../../../zok_sub_kernel/_service/vector_kernels.hpp"

namespace orv {
inline namespace ORV_TAG {

/// ln gamma(x) - ((x - 1/2) ln x - x + ln(2 pi) / 2), from 1 on: Stirling's series (1730), good to
/// 10^-10 from 5 and to 5 10^-4 at 1.
template <class T>
T stirling_rest(T x) {
  const T i = 1 / x, i2 = i * i;
  return i * (1.0 / 12 - i2 * (1.0 / 360 - i2 * (1.0 / 1260 - i2 * (1.0 / 1680 - i2 / 1188))));
}

/// Of a law whose probabilities are a power times a product of gamma(f + direction d)^-weight.
/// The weights times directions have the sum 0, or 1 for a power that makes up for it.
template <int terms>
class LogRatio {
 public:
  /// Of a gamma function: its argument at the mode, how that moves with the number, -1 if it
  /// multiplies.
  struct Gamma {
    double f, direction, weight;
  };

  LogRatio() = default;
  /// `slope` is the logarithm of what each step multiplies, apart from gamma(x + 1) / gamma(x)
  /// taken as f.
  LogRatio(double slope, const Gamma (&gammas)[terms]) : slope_(slope), constant_(0) {
    for (int t = 0; t < terms; ++t) {
      const auto& [f, direction, weight] = gamma_[t] = gammas[t];
      slope_ += weight * direction;
      constant_ += weight * rest_at_mode(f);
    }
  }

  /// r[i] = ln(f(mode + d[i]) / f(mode)) for up to `most` differences
  static constexpr int32_t most = 512;
  void operator()(int32_t n, const double* d, double* r) const {
    alignas(32) double t[most], sum[most], ln[most];
    for (int32_t i = 0; i < n; ++i) r[i] = constant_ + slope_ * d[i];
    for (const auto& [f, direction, weight] : gamma_) {
      const double scale = direction / f;
      for (int32_t i = 0; i < n; ++i) {
        t[i] = scale * d[i];
        sum[i] = 1 + t[i];
      }
      kernels::ln(n, sum, ln, Slot::ha);
      for (int32_t i = 0; i < n; ++i) {
        const double x = f + direction * d[i];
        const double ln1p = ln[i] + (t[i] - (sum[i] - 1)) / sum[i];  // with what the sum has lost
        r[i] -= weight * ((x - 0.5) * ln1p + stirling_rest(x));
      }
    }
  }
  double operator()(double d) const {
    double r;
    (*this)(1, &d, &r);
    return r;
  }

 private:
  static double rest_at_mode(double f) {
    constexpr double ln_root_of_2_pi = 0.91893853320467274;
    if (f > 16) return stirling_rest(f);
    return __zokdLGamma(f) - ((f - 0.5) * __zokdLn(f) - f + ln_root_of_2_pi);
  }

  double slope_, constant_;
  Gamma gamma_[terms];
};

}  // namespace ORV_TAG
}  // namespace orv
