// SPDX-License-Identifier: MIT
// InvCbrt: the reciprocal of the cube root, with the sign of x. A zero is reported.
#pragma once

#include "../_heap/real/cube_root.hpp"
#include "tables/vdinvcbrt_tables.hpp"
#include "tables/vsinvcbrt_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class T>
struct InvCbrtData;
template <>
struct InvCbrtData<double> {
  static constexpr const auto& table = vdinvcbrt_table;
  static constexpr const auto& ha_series = vdinvcbrt_ha_series;
};
template <>
struct InvCbrtData<float> {
  static constexpr const auto& table = vsinvcbrt_table;
  static constexpr const auto& ha_series = vsinvcbrt_ha_series;
  static constexpr const auto& la_series = vsinvcbrt_la_series;
  static constexpr const auto& ep_series = vsinvcbrt_ep_series;
};

template <class T, Level level>
struct InvCbrt : CubeRootFrame<T> {
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "InvCbrt";

  template <class V>
  static V lane(V x) {
    const CubeRootArgument<V> a(x);
    const auto [t, rest] = cube_root<InvCbrtData<T>, level>(a);
    return either(a.template scaled<-1>(t + rest), a.sign());
  }

  static int slow(const T* px, T* py) {
    const T x = *px;
    *py = is_denormal(x) ? alone<InvCbrt>(x * up<T>) * root_of_up<T> : T{1} / x;
    return x == 0 ? QEM_STATUS_SINGULARITY : QEM_STATUS_OK;
  }
};

}  // namespace ORV_TAG
}  // namespace orv
