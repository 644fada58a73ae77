// SPDX-License-Identifier: MIT
// Cbrt: the cube root, with the sign of x. Nothing is reported.
#pragma once

#include "../_heap/real/cbrt_data.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class T, Level level>
struct Cbrt : CubeRootFrame<T> {
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Cbrt";

  template <class V>
  static V lane(V x) {
    const CubeRootArgument<V> a(x);
    const auto [t, rest] = cube_root<CbrtData<T>, level>(a);
    return either(a.template scaled<1>(t + rest), a.sign());
  }

  static int slow(const T* px, T* py) {
    const T x = *px;
    *py = is_denormal(x) ? alone<Cbrt>(x * up<T>) / root_of_up<T> : x + x;
    return QEM_STATUS_OK;
  }
};

}  // namespace ORV_TAG
}  // namespace orv
