// SPDX-License-Identifier: MIT
// The inverse error functions by way of the C library.
#pragma once

#include <cmath>

namespace orv_test {

/// t with erf(t) = d and erfc(t) = w = 1 - d, d in [0, 1); whichever of them is smaller is exact.
/// To about an ulp.
template <class R>
R inverse_error(R d, R w) {
  constexpr R half_root_of_pi = 0.8862269254527580137;
  R t = half_root_of_pi * d;
  if (d > 0.1) {  // S. Winitzki (2008)
    constexpr R a = 0.147, pi = 4 * half_root_of_pi * half_root_of_pi;
    const R log = std::log(w * (2 - w)), half = 2 / (pi * a) + log / 2;
    t = std::sqrt(std::sqrt(half * half - log / a) - half);
  }
  // A step of Newton's method for the logarithm, which is all but a parabola where w is tiny.
  if (d > 0.5) t += std::log(std::erfc(t) / w) * std::erfc(t) * std::exp(t * t) * half_root_of_pi;
  for (int i = 0; i < 2; ++i) {  // E. Halley's method
    const R excess = d > 0.5 ? w - std::erfc(t) : std::erf(t) - d;
    const R step = excess * std::exp(t * t) * half_root_of_pi;
    t -= step / (1 + step * t);
  }
  return t;
}

/// NaN outside the domain.
inline double erfinv(double x) {
  const double d = std::fabs(x);
  if (!(d < 1)) return d == 1 ? std::copysign(INFINITY, x) : NAN;
  return std::copysign(inverse_error(d, 1 - d), x);
}
inline double erfcinv(double x) {
  const double w = x > 1 ? 2 - x : x;
  if (!(w > 0)) return w == 0 ? std::copysign(INFINITY, 1 - x) : NAN;
  return x > 1 ? -inverse_error(1 - w, w) : inverse_error(1 - w, w);
}
inline double cdfnorminv(double x) { return x == 0.5 ? 0 : -std::sqrt(2.0) * erfcinv(2 * x); }

}  // namespace orv_test
