// SPDX-License-Identifier: MIT
// ErfcInv: the inverse of the complementary error function.
#pragma once

#include "../_heap/real/inverse_error.hpp"
#include "tables/derfcinv_tables.hpp"
#include "tables/serfcinv_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

inline constexpr const auto& sErfcInv_EP_Table = sErfcInv_LA_Table;

struct ErfcInv {
  static constexpr char name[] = "ErfcInv";
  static constexpr Environment environment = environment_none;
  template <class T, Level>
  static constexpr int block = 32 / sizeof(T);
  static constexpr double zero = 1;

  template <class V>
  static InverseErrorArgument<V> argument(V x) {
    using T = Lane<V>;
    return {T{1} - x, minimum(x, T{2} - x)};
  }
  template <class V>
  static V d_low(V x, V d) {
    return (Lane<V>{1} - d) - x;
  }

  template <class T, class V>
  static V rare(V x) {
    return lanes_outside(x, Lane<V>(sizeof(T) == 8 ? 0x1p-53 : 0x1p-24), Lane<V>{2});
  }

  template <class T, Level level>
  static constexpr const auto& table() {
    if constexpr (sizeof(T) == sizeof(float)) {
      return of_level<level>(sErfcInv_LA_Table, sErfcInv_HA_Table, sErfcInv_EP_Table);
    } else {
      return of_level<level>(dErfcInv_LA_Table, dErfcInv_HA_Table, dErfcInv_EP_Table);
    }
  }

  static int slow(const double* x, double* y) { return dErfcInv_SC(x, y); }
  static int slow(const float* x, float* y) { return sErfcInv_SC(x, y); }
};

}  // namespace ORV_TAG
}  // namespace orv
