// SPDX-License-Identifier: MIT
// Poisson numbers from Gaussian ones: the floor of a polynomial in g, whose coefficients come from
// the mean.
#pragma once

#include <orv/scalar.h>

#include "../_service/results.hpp"
#include "tables/poisson_normal_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

/// The polynomial of a mean from 1 on.
class PoissonCurve {
 public:
  explicit PoissonCurve(double lambda) {
    if (lambda >= 100) {
      expand(lambda);
    } else {
      look_up(lambda);
    }
  }

  int32_t operator()(double g) const {
    const double x = a_[0] + (a_[1] + (a_[2] + (a_[3] + a_[4] * g) * g) * g) * (a_[5] * g);
    return to_result(x > 0 ? x : 0);
  }

 private:
  /// The quantile of the Poisson law in powers of 1 / sqrt(lambda), after Cornish and Fisher
  /// (1938), for a number rounded down; the term in g^4 stands in those below it, in the mean.
  void expand(double lambda) {
    const double t = 1 / lambda, s = __zokdSqrt(lambda);
    a_[0] = lambda + 1.0 / 3 - t * (8.0 / 405 + 3.0 / 270);
    a_[1] = 1 - t / 36;
    a_[2] = (1.0 / 6 + t * (7.0 / 810 + 6.0 / 270)) / s;
    a_[3] = -t / 72;
    a_[4] = 0;
    a_[5] = s;
  }

  /// Cubic polynomials in the mantissa.
  void look_up(double lambda) {
    int64_t bits;
    __builtin_memcpy(&bits, &lambda, sizeof bits);
    const auto binade = static_cast<int32_t>(bits >> 52) - 1023;
    bits = (bits & 0xFFFFFFFFFFFFF) | 0x3FF0000000000000;
    double f;
    __builtin_memcpy(&f, &bits, sizeof f);
    f -= 1;
    const double(*const row)[4] = iPoissC[binade];
    for (int j = 0; j < 6; ++j) {
      a_[j] = row[j][0] + (row[j][1] + (row[j][2] + row[j][3] * f) * f) * f;
    }
    a_[0] += 1;
  }

  double a_[6];
};

/// Draws blocks of n Gaussian numbers for work(count, numbers).
template <class Work>
int32_t with_gaussians(StreamState* stream, int32_t n, const Work& work) {
  constexpr int32_t block = 1024, by_inversion = 2;
  alignas(32) float g[block];
  while (n > 0) {
    const int32_t count = n < block ? n : block;
    const int32_t status = _zoksRngGaussian(by_inversion, stream, count, g, 0, 1);
    if (status < 0) return status;
    work(count, g);
    n -= count;
  }
  return RNG_OK;
}

}  // namespace ORV_TAG
}  // namespace orv
