// SPDX-License-Identifier: MIT
// Cosh: the hyperbolic cosine.
#pragma once

#include <type_traits>

#include "../_heap/real/hyperbolic.hpp"
#include "../_heap/real/power_of_e.hpp"
#include "../frame/function_name.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class E, Level level>
struct Cosh {
  using T = E;
  using Work = std::conditional_t<level == Level::HA, double, T>;
  static constexpr int block = sizeof(Work) == sizeof(double) ? 8 : 16;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Cosh";
  static constexpr Environment environment = environment_mode;

  template <class V>
  static int rare(V x) {
    return hyperbolic_rare<T>(x);
  }

  static int slow(const T* x, T* y) { return hyperbolic_cout_rare<Hyperbolic::Cosine>(x, y); }

  template <class V>
  static V lane(V x) {
    const V v = absolute(x);
    if constexpr (sizeof(T) == sizeof(double) && level == Level::HA) {
      return hyperbolic_in_parts<Hyperbolic::Cosine>(v);
    } else {
      return cosh_by_quotient<T, level>(v);
    }
  }
};

}  // namespace ORV_TAG
}  // namespace orv
