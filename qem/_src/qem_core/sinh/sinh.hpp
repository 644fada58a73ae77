// SPDX-License-Identifier: MIT
// Sinh: the hyperbolic sine, with the sign of x.
#pragma once

#include <type_traits>

#include "../_heap/real/hyperbolic.hpp"
#include "../_heap/real/power_of_e.hpp"
#include "../frame/function_name.hpp"

namespace orv {
inline namespace ORV_TAG {

/// sinh v of 0 <= v < 1/4, where the difference of both exponentials loses digits.
template <class V>
V _qemdSinhNearZero(V v) {
  const V v2 = v * v;
  return v + v * (v2 * horner(vdsinh_near_zero, v2));
}

template <class E, Level level>
struct Sinh {
  using T = E;
  using Work = std::conditional_t<level == Level::HA, double, T>;
  static constexpr bool in_parts = sizeof(T) == sizeof(double) && level == Level::HA;
  static constexpr int block = sizeof(Work) == sizeof(double) ? 8 : 16;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Sinh";
  static constexpr Environment environment = in_parts ? environment_x87_extended : environment_mode;

  template <class V>
  static int rare(V x) {
    return hyperbolic_rare<T>(x);
  }

  static int slow(const T* x, T* y) { return hyperbolic_cout_rare<Hyperbolic::Sine>(x, y); }

  template <class V>
  static V lane(V x) {
    const V v = absolute(x), sign = exclusive(x, v);
    if constexpr (in_parts) {
      V y = hyperbolic_in_parts<Hyperbolic::Sine>(v);
      const V near_zero = greater(splat<V>(0.25), number_or_zero(v));
      if (mask_of(near_zero) != 0) y = select(near_zero, _qemdSinhNearZero(v), y);
      return either(y, sign);
    } else {
      return either(sinh_by_quotient<T, level>(v), sign);
    }
  }
};

}  // namespace ORV_TAG
}  // namespace orv
