// SPDX-License-Identifier: MIT
// Inv: 1/x, rounded once at every level; see Div.
#pragma once

#include "../frame/function_name.hpp"
#include "../frame/guarded.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class Element, int elements_a_pass>
struct Inv {
  using T = Element;
  static constexpr int block = elements_a_pass;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Inv";
  static constexpr Environment environment = environment_mode;

  template <class V>
  static V lane(V x) {
    return T{1} / x;
  }
  template <class V>
  static int rare(V x) {
    return mask_of(equal(x, V{}));
  }

  static int slow(const T* x, T* r) {
    *r = T{1} / *x;
    return *x == 0 ? QEM_STATUS_SINGULARITY : QEM_STATUS_OK;
  }
};

}  // namespace ORV_TAG
}  // namespace orv
