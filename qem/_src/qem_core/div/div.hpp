// SPDX-License-Identifier: MIT
// Div: a/b, rounded once at every level.
//
// The processor's division is as fast as a reciprocal with its corrections, independent of the
// neighbours, and the same on every processor.
#pragma once

#include "../frame/function_name.hpp"
#include "../frame/guarded.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class Element, int elements_a_pass>
struct Div {
  using T = Element;
  static constexpr int block = elements_a_pass;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Div";
  static constexpr Environment environment = environment_mode;

  template <class V>
  static V lane(V a, V b) {
    return a / b;
  }
  template <class V>
  static int rare(V, V b) {
    return mask_of(equal(b, V{}));
  }

  static int slow(const T* a, const T* b, T* r) {
    *r = *a / *b;
    return *b == 0 ? QEM_STATUS_SINGULARITY : QEM_STATUS_OK;
  }
};

}  // namespace ORV_TAG
}  // namespace orv
