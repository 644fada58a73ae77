// SPDX-License-Identifier: MIT
// Pow3o2: x^(3/2), by the processor's square root.
//
// LA and EP are x sqrt(x). HA has it in parts: with the rounded root g and what is left of x, r = x
// - g^2, sqrt(x) is g + r/(2 g), and x r/(2 g) is g r/2.
#pragma once

#include "../_heap/real/root.hpp"
#include "../frame/function_name.hpp"
#include "../frame/guarded.hpp"
#include "../frame/level.hpp"

namespace orv {
inline namespace ORV_TAG {

/// The lanes of HA: those whose products are in range to the last of their bits.
template <class T>
struct pow3o2_data;
template <>
struct pow3o2_data<double> {
  static constexpr double smallest = 0x1p-600, largest = 0x1p680;
};
template <>
struct pow3o2_data<float> {
  static constexpr float smallest = 0x1p-60f, largest = 0x1p84f;
};

/// The first part is exact, of the upper halves.
template <class V>
TwoParts<V> pow3o2_in_parts(V x) {
  using T = Lane<V>;
  const V g = square_root(x);
  const V g_hi = upper_half(g), x_hi = upper_half(x);
  const V rest = x_hi * (g - g_hi) + (x - x_hi) * g;
  return {x_hi * g_hi, rest + (T{0.5} * g) * root_residual(x, g)};
}

/// A positive number, to HA accuracy and with one rounding.
inline double pow3o2_scaled(double x) {
  const double scale = x > 1 ? 0x1p-600 : 0x1p600, scale_back = x > 1 ? 0x1p900 : 0x1p-900;
  const auto y = pow3o2_in_parts(splat<__m128d>(x * scale));
  return scaled({y.hi[0], y.lo[0]}, scale_back);
}
inline float pow3o2_scaled(float x) {
  const auto v = splat<__m128d>(x);
  float y;
  store_low(&y, v * square_root(v));
  return y;
}

template <class Element, Level level>
struct Pow3o2 {
  using T = Element;
  using D = pow3o2_data<T>;
  using F = Format<T>;
  static constexpr int block = 4;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Pow3o2";
  static constexpr Environment environment = environment_mode;

  template <class V>
  static V lane(V x) {
    if constexpr (level == Level::HA) {
      const TwoParts<V> y = pow3o2_in_parts(x);
      return y.hi + y.lo;
    } else {
      return x * square_root(x);
    }
  }
  template <class V>
  static int rare(V x) {
    return high_word_outside(x, F::high_word(D::smallest), F::high_word(D::largest));
  }

  static int slow(const T* px, T* y) {
    const T x = *px;
    if (x < 0) {
      store_low(y, square_root(splat<Narrow<T>>(x)));
      return QEM_STATUS_DOMAIN;
    }
    *y = x > 0 && x < F::infinity ? pow3o2_scaled(x) : x + x;
    return QEM_STATUS_OK;
  }
};

}  // namespace ORV_TAG
}  // namespace orv
