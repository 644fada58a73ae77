// SPDX-License-Identifier: MIT
// CdfNormInv: the normal distribution's quantile, the number below which a share x of it lies.
#pragma once

#include "../_heap/real/inverse_error.hpp"
#include "tables/dcdfnorminv_tables.hpp"
#include "tables/scdfnorminv_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

inline constexpr const auto& sCdfNormInv_EP_Table = sCdfNormInv_LA_Table;

struct CdfNormInv {
  static constexpr char name[] = "CdfNormInv";
  static constexpr Environment environment = environment_none;
  template <class T, Level>
  static constexpr int block = 32 / sizeof(T);
  static constexpr double zero = 0.5;

  template <class V>
  static InverseErrorArgument<V> argument(V x) {
    using T = Lane<V>;
    const V twice = x + x;
    return {twice - T{1}, minimum(twice, T{2} - twice)};
  }
  template <class V>
  static V d_low(V x, V d) {
    return (x + x) - (d + Lane<V>{1});
  }

  template <class T, class V>
  static V rare(V x) {
    return lanes_outside(x, Lane<V>(sizeof(T) == 8 ? 0x1p-54 : 0x1p-25), Lane<V>{1});
  }

  template <class T, Level level>
  static constexpr const auto& table() {
    if constexpr (sizeof(T) == sizeof(float)) {
      return of_level<level>(sCdfNormInv_LA_Table, sCdfNormInv_HA_Table, sCdfNormInv_EP_Table);
    } else {
      return of_level<level>(dCdfNormInv_LA_Table, dCdfNormInv_HA_Table, dCdfNormInv_EP_Table);
    }
  }

  static int slow(const double* x, double* y) { return dCdfNormInv_SC(x, y); }
  static int slow(const float* x, float* y) { return sCdfNormInv_SC(x, y); }
};

}  // namespace ORV_TAG
}  // namespace orv
