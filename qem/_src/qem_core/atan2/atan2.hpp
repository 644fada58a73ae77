// SPDX-License-Identifier: MIT
// Atan2: the angle of the point (b, a), from -pi to pi. Its formulas are in arctangent.hpp.
#pragma once

#include "../_heap/real/arctangent.hpp"
#include "../frame/function_name.hpp"
#include "../frame/guarded.hpp"

namespace orv {
inline namespace ORV_TAG {

template <Level level, class V>
V angle(V y, V x) {
  const V size = absolute(y);
  const TwoParts<V> a = upper_angle<level>(size, x);
  return exclusive(a.hi + a.lo, exclusive(y, size));
}

/// Special cases and the full range, to HA accuracy at every level.
template <class T>
T vatan2_cout_rare(T y, T x) {
  using F = Format<T>;
  constexpr const auto& eighth = vatan_data<T>::eighth;
  const auto eighths = [=](T k) {
    return __builtin_copysign(k * opaque(eighth[0]) + k * eighth[1], y);
  };
  if (x != x || y != y) return y + x;
  const bool left = __builtin_signbit(x), no_point = x == 0 && y == 0;
  const T height = __builtin_fabs(y), width = no_point ? 1 : __builtin_fabs(x);
  if (height == F::infinity && width == F::infinity) return eighths(left ? 3 : 1);
  if (height == 0 || width == F::infinity || height < T{0x1p-60} * width) {
    return left ? eighths(4) : y / width;
  }
  if (width < T{0x1p-60} * height) return eighths(2);

  // Both are brought to where the lanes serve them.
  const T scale = height + width < 1 ? 1 / F::smallest_normal : F::smallest_normal;
  const auto scaled = [=](T z) { return splat<Narrow<T>>(z * scale); };
  return angle<Level::HA>(scaled(y), scaled(x))[0];
}

template <class Element, Level level>
struct Atan2 {
  using T = Element;
  static constexpr int block = 8;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Atan2";
  static constexpr Environment environment = environment_mode;

  template <class V>
  static V lane(V y, V x) {
    return angle<level>(y, x);
  }
  template <class V>
  static int rare(V y, V x) {
    return no_upper_angle(y, x);
  }

  static int slow(const T* y, const T* x, T* r) {
    *r = vatan2_cout_rare(*y, *x);
    return QEM_STATUS_OK;
  }
};

}  // namespace ORV_TAG
}  // namespace orv
