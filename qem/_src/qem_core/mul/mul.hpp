// SPDX-License-Identifier: MIT
// Mul: the product of two vectors, rounded once.
#pragma once

#include "../frame/elementwise.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class Element>
struct Mul {
  using T = Element;
  template <class V>
  static V lane(V x, V y) {
    return x * y;
  }
};

}  // namespace ORV_TAG
}  // namespace orv
