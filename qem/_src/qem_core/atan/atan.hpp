// SPDX-License-Identifier: MIT
// Atan: the arctangent. Its formulas are in arctangent.hpp.
#pragma once

#include "../_heap/real/arctangent.hpp"
#include "../frame/function_name.hpp"
#include "../frame/guarded.hpp"

namespace orv {
inline namespace ORV_TAG {

/// What the lanes leave out: NaN, and numbers so large that the result is pi/2.
template <class T>
int vatan_cout_rare(T x, T* y) {
  constexpr const auto& eighth = vatan_data<T>::eighth;
  *y = x != x ? x + x : __builtin_copysign(2 * opaque(eighth[0]) + 2 * eighth[1], x);
  return QEM_STATUS_OK;
}

template <class Element, Level level>
struct Atan {
  using T = Element;
  static constexpr int block = 64 / sizeof(T);
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Atan";
  static constexpr Environment environment = environment_mode;

  template <class V>
  static V lane(V x) {
    const V size = absolute(x);
    const TwoParts<V> y = arctangent<level>(size);
    return exclusive(y.hi + y.lo, exclusive(x, size));
  }
  template <class V>
  static int rare(V x) {
    return high_word_above(x, Format<T>::high_word(vatan_data<T>::highest) - 1);
  }

  static int slow(const T* x, T* y) { return vatan_cout_rare(*x, y); }
};

}  // namespace ORV_TAG
}  // namespace orv
