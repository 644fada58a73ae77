// SPDX-License-Identifier: MIT
// Hypot: sqrt(a^2 + b^2).
//
// LA and EP take that as it stands. HA of floats goes through double, where squares are exact. HA
// of doubles has the sum of squares in parts (T. J. Dekker, 1971; D. E. Knuth, 1969) and corrects
// the root by what it leaves of them.
#pragma once

#include <type_traits>

#include "../_heap/real/root.hpp"
#include "../frame/function_name.hpp"
#include "../frame/guarded.hpp"
#include "../frame/level.hpp"

namespace orv {
inline namespace ORV_TAG {

/// The second part is the correction of the first.
template <class V>
TwoParts<V> hypot_in_parts(V a, V b) {
  const TwoParts<V> a2 = square_in_parts(a), b2 = square_in_parts(b);
  const TwoParts<V> sum = exact_sum(a2.hi, b2.hi);
  const V rest = a2.lo + b2.lo;
  const V root = square_root(sum.hi + rest);
  return {root, (root_residual(sum.hi, root) + (rest + sum.lo)) * (0.5 / root)};
}

/// The full range: brought near 1, and back with one rounding.
inline int vdhypot_cout_rare(const double* pa, const double* pb, double* y) {
  const double a = __builtin_fabs(*pa), b = __builtin_fabs(*pb);
  constexpr double infinity = Format<double>::infinity;
  if (a == infinity || b == infinity || a != a || b != b) {
    *y = a == infinity || b == infinity ? infinity : a * b;
    return QEM_STATUS_OK;
  }
  const double larger = a > b ? a : b;
  if (larger == 0) {
    *y = 0;
    return QEM_STATUS_OK;
  }
  // 2^2 for the larger one, or so far up that denormals come close.
  const uint64_t exponent = bits_of(larger) >> 52;
  const uint64_t up = exponent < 25 ? 2025 - exponent : 2048 - exponent;
  const double scale = from_bits(up << 52);
  const auto parts = hypot_in_parts(splat<__m128d>(a * scale), splat<__m128d>(b * scale));
  *y = scaled({parts.hi[0], parts.lo[0]}, from_bits((2046 - up) << 52));
  return QEM_STATUS_OK;
}

inline int vshypot_cout_rare(const float* pa, const float* pb, float* y) {
  const double a = *pa, b = *pb;
  const bool infinite = __builtin_isinf(a) || __builtin_isinf(b);
  const double sum = infinite ? Format<double>::infinity : a * a + b * b;
  store_low(y, square_root(splat<__m128d>(sum)));
  return QEM_STATUS_OK;
}

template <class Element, Level level>
struct Hypot {
  using T = Element;
  using Work = std::conditional_t<level == Level::HA, double, T>;
  static constexpr int block = 8;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Hypot";
  static constexpr Environment environment = environment_mode;
  static constexpr float smallest = 0x1p-124f, largest = 0x1p124f;  // sums of squares in the lanes

  template <class V>
  static V lane(V a, V b) {
    if constexpr (level == Level::HA && sizeof(T) == sizeof(double)) {
      const TwoParts<V> y = hypot_in_parts(a, b);
      return y.hi + y.lo;
    } else {
      return square_root(a * a + b * b);
    }
  }
  template <class V>
  static int rare(V a, V b) {
    return outside(a * a + b * b, Lane<V>(smallest), Lane<V>(largest));
  }

  static int slow(const double* a, const double* b, double* y) {
    return vdhypot_cout_rare(a, b, y);
  }
  static int slow(const float* a, const float* b, float* y) { return vshypot_cout_rare(a, b, y); }
};

}  // namespace ORV_TAG
}  // namespace orv
