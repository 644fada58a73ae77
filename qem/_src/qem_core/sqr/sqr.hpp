// SPDX-License-Identifier: MIT
// Sqr: the square of a vector, rounded once.
#pragma once

#include "../frame/elementwise.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class Element>
struct Sqr {
  using T = Element;
  template <class V>
  static V lane(V x) {
    return x * x;
  }
};

}  // namespace ORV_TAG
}  // namespace orv
