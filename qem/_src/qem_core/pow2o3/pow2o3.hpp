// SPDX-License-Identifier: MIT
// Pow2o3: x^(2/3), the square of the cube root, whatever the sign of x. Nothing is reported.
#pragma once

#include "../_heap/real/cbrt_data.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class T, Level level>
struct Pow2o3 : CubeRootFrame<T> {
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Pow2o3";

  template <class V>
  static V lane(V x) {
    const CubeRootArgument<V> a(x);
    auto [hi, lo] = cube_root<CbrtData<T>, level>(a);
    if constexpr (level == Level::HA) {  // halves the first part's bits: its square is exact
      using F = Format<T>;
      constexpr auto lower_half = (typename F::Bits{1} << (F::fraction_bits / 2 + 1)) - 1;
      const V upper = and_bits(hi, ~lower_half);
      lo = (hi - upper) + lo;
      hi = upper;
    }
    return a.template scaled<2>(hi * hi + (hi + hi + lo) * lo);
  }

  static int slow(const T* px, T* py) {
    const T x = *px;
    *py = is_denormal(x) ? alone<Pow2o3>(x * up<T>) / (root_of_up<T> * root_of_up<T>) : x * x;
    return QEM_STATUS_OK;
  }
};

}  // namespace ORV_TAG
}  // namespace orv
