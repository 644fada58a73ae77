// SPDX-License-Identifier: MIT
// Sqrt: the square root, rounded once at every level.
//
// The processor's square root takes less time than an estimate with its corrections, and gives the
// same bits on every processor.
#pragma once

#include "../frame/function_name.hpp"
#include "../frame/guarded.hpp"
#include "../simd/format.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class Element>
struct Sqrt {
  using T = Element;
  using F = Format<T>;
  static constexpr int block = 8;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Sqrt";
  static constexpr Environment environment = environment_mode;

  template <class V>
  static V lane(V x) {
    return square_root(x);
  }
  template <class V>
  static int rare(V x) {
    return outside(x, F::smallest_normal, F::largest);
  }

  static int slow(const T* px, T* y) {
    const T x = *px;
    store_low(y, square_root(splat<Narrow<T>>(x)));
    return x < 0 ? QEM_STATUS_DOMAIN : QEM_STATUS_OK;
  }
};

}  // namespace ORV_TAG
}  // namespace orv
