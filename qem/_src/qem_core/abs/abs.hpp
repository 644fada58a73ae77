// SPDX-License-Identifier: MIT
// Abs: the number times its own sign. A multiplication, not a masking of the sign bit: it quiets a
// signalling NaN with the invalid flag, and takes a denormal to 0 where the caller's control word
// says so.
#pragma once

#include "../frame/padded.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class Element, int elements_a_pass>
struct Abs {
  using T = Element;
  static constexpr int block = elements_a_pass;

  template <class V>
  static V lane(V x) {
    const V sign = and_bits(x, bits_of(-T{0}));
    return x * or_bits(sign, bits_of(T{1}));
  }
};

}  // namespace ORV_TAG
}  // namespace orv
