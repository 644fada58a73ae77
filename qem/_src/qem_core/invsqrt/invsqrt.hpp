// SPDX-License-Identifier: MIT
// InvSqrt: 1/sqrt(x).
//
// LA is the processor's square root and division. HA cuts that to half its bits, so that what it
// leaves of 1 is known exactly, and adds the series of (1 - e)^(-1/2). EP of floats starts from
// half the exponent by integer arithmetic on the bit pattern (G. Walsh, 1986), the fraction going
// along as if the logarithm were linear, and takes a step of the same series.
#pragma once

#include "../_heap/real/root.hpp"
#include "../frame/function_name.hpp"
#include "../frame/guarded.hpp"
#include "../frame/level.hpp"
#include "../simd/polynomial.hpp"

namespace orv {
inline namespace ORV_TAG {

/// Scales by which the slow path keeps numbers away from denormal halves, and the end of those.
template <class T>
struct invsqrt_data;
template <>
struct invsqrt_data<double> {
  static constexpr double smallest = 0x1p-960, up = 0x1p120, root_of_up = 0x1p60;
};
template <>
struct invsqrt_data<float> {
  static constexpr float smallest = 0x1p-100f, up = 0x1p50f, root_of_up = 0x1p25f;
};

template <class V>
V corrected_inverse_root(V x) {
  using T = Lane<V>;
  const V y = upper_half(T{1} / square_root(x));
  const V x_hi = upper_half(x);
  const V p = x_hi * y, p_hi = upper_half(p), q = (x - x_hi) * y;  // x y = p + q
  const V e = (T{1} - p_hi * y) - ((p - p_hi) + q) * y;
  return y + y * (e * (T{0.5} + T{0.375} * e));
}

inline __m128 short_inverse_root(__m128 x) {
  static constexpr float series[] = {1.875f, -1.25f, 0.375f};  // of x y^2
  const __m128i halved = _mm_srli_epi32(bits_of(x), 1);
  const __m128 y = as_vector<__m128>(_mm_sub_epi32(_mm_set1_epi32(0x5F3759DF), halved));
  return y * horner(series, x * y * y);
}

template <class Element, Level level>
struct InvSqrt {
  using T = Element;
  using D = invsqrt_data<T>;
  using F = Format<T>;
  static constexpr int block = 4;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "InvSqrt";
  static constexpr Environment environment =
      sizeof(T) == sizeof(float) && level != Level::HA ? environment_x87_double : environment_mode;

  template <class V>
  static V lane(V x) {
    if constexpr (level == Level::HA) return corrected_inverse_root(x);
    if constexpr (level == Level::LA) return T{1} / square_root(x);
    if constexpr (level == Level::EP) return short_inverse_root(x);
  }
  template <class V>
  static int rare(V x) {
    return high_word_outside(x, F::high_word(D::smallest), F::high_word(F::largest));
  }

  static int slow(const T* px, T* y) {
    const T x = *px;
    const auto v = splat<Narrow<T>>(x);
    if (x < 0) {
      store_low(y, square_root(v));
      return QEM_STATUS_DOMAIN;
    }
    if (x > 0 && x < F::infinity) {
      store_low(y, corrected_inverse_root(v * D::up) * D::root_of_up);
      return QEM_STATUS_OK;
    }
    *y = T{1} / x;
    return x == 0 ? QEM_STATUS_SINGULARITY : QEM_STATUS_OK;
  }
};

}  // namespace ORV_TAG
}  // namespace orv
