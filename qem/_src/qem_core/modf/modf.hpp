// SPDX-License-Identifier: MIT
// Modf: the integral part towards zero and the fractional part, both with the sign of x.
//
// Adding 2^52 (2^23) and taking it off rounds a smaller number to a whole one, towards zero under
// the frame's control word. From there on every number is whole.
#pragma once

#include "../frame/function_name.hpp"
#include "../frame/guarded.hpp"
#include "../simd/format.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class Element, int elements_a_pass>
struct Modf {
  using T = Element;
  using F = Format<T>;
  static constexpr int block = elements_a_pass;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Modf";
  static constexpr Environment environment = environment_toward_zero;
  static constexpr T all_whole = T{1} / F::epsilon;

  template <class V>
  static void lane(V x, V& whole, V& rest) {
    const V sign = and_bits(x, bits_of(-T{0}));
    const V a = exclusive(x, sign);
    const V t = (a + all_whole) - all_whole;
    whole = either(t, sign);
    rest = either(a - t, sign);
  }
  template <class V>
  static int rare(V x) {
    return high_word_above(x, F::high_word(all_whole) - 1);
  }

  static int slow(const T* px, T* whole, T* rest) {
    const T x = *px;
    const bool is_number = x == x;
    *whole = is_number ? x : x + x;
    *rest = is_number ? __builtin_copysign(T{0}, x) : x + x;
    return QEM_STATUS_OK;
  }
};

}  // namespace ORV_TAG
}  // namespace orv
