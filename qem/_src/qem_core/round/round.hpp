// SPDX-License-Identifier: MIT
// Round: to the nearest whole number, ties away from zero, with the sign of x.
//
// Half a unit is added in magnitude, then the fraction is cut off. It is the number before a half:
// with a half itself, the number before a half would be carried up to 1. A tie still comes out as
// the next whole number, since the sum is rounded to even.
#pragma once

#include "../simd/format.hpp"
#include "../simd/vectors.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class Element>
struct Round {
  using T = Element;

  template <class V>
  static V lane(V x) {
    constexpr T before_half = T(0.5) - Format<T>::epsilon / 4;
    const V sign = and_bits(x, bits_of(-T{0}));
    return to_whole<_MM_FROUND_TRUNC>(x + or_bits(sign, bits_of(before_half)));
  }
};

}  // namespace ORV_TAG
}  // namespace orv
