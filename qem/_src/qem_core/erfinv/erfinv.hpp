// SPDX-License-Identifier: MIT
// ErfInv: the inverse of the error function. Its rows are those of ErfcInv.
#pragma once

#include "../_heap/real/inverse_error.hpp"
#include "../erfcinv/tables/derfcinv_tables.hpp"
#include "../erfcinv/tables/serfcinv_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

/// Rows of doubles from here on; a float is served down to 0.
template <class T>
inline constexpr double erfinv_least = sizeof(T) == sizeof(double) ? 0x1p-35 : 0;

/// sqrt(pi)/2 x, which is all that counts of smaller numbers. Scaled, and what becomes a denormal
/// is rounded to its last place from two parts.
inline double erfinv_near_zero(double x) {
  constexpr double factor = 0.88623046875, factor_low = -3.543297241986351e-6;
  constexpr double up = 0x1p256, down = 0x1p-256, to_last_place = 0x1.8p-1022 * up;
  const double y = x * up, high = upper_half(y);
  const double main = high * factor, rest = (y - high) * factor + y * factor_low;
  if (__builtin_fabs(main + rest) >= Format<double>::smallest_normal * up) {
    return (main + rest) * down;
  }
  const double places = (main + to_last_place) - to_last_place;
  const double places_of_rest = (((main - places) + rest) + to_last_place) - to_last_place;
  return (places + places_of_rest) * down;
}

/// Numbers below erfinv_least, those outside (-1, 1), and NaN.
template <class T>
int erfinv_cout_rare(const T* px, T* py) {
  using F = Format<T>;
  const T x = *px, zero = opaque(T{0});
  const auto magnitude = bits_of(x) << 1 >> 1;
  if (magnitude > bits_of(F::infinity)) {
    *py = x + x;
  } else if (magnitude < bits_of(T{1})) {
    *py = x == 0 ? x * T{0.5} : static_cast<T>(erfinv_near_zero(x));  // flushed denormals, too
  } else if (magnitude == bits_of(T{1})) {
    *py = x / zero;
    return QEM_STATUS_SINGULARITY;
  } else {
    *py = zero / zero;
    return QEM_STATUS_DOMAIN;
  }
  return QEM_STATUS_OK;
}

struct ErfInv {
  static constexpr char name[] = "ErfInv";
  static constexpr Environment environment = environment_mode;
  template <class T, Level level>
  static constexpr int block = sizeof(T) == sizeof(float) ? 16
                               : level == Level::EP       ? 8
                                                          : 4;
  static constexpr double zero = 0;

  template <class V>
  static InverseErrorArgument<V> argument(V x) {
    return {x, Lane<V>{1} - absolute(x)};
  }
  template <class V>
  static V w_low(V w, V d) {
    return (Lane<V>{1} - w) - absolute(d);
  }

  template <class T, class V>
  static V rare(V x) {
    return lanes_outside(absolute(x), Lane<V>{erfinv_least<T>}, Lane<V>{1});
  }

  template <class T, Level level>
  static constexpr const auto& table() {
    if constexpr (sizeof(T) == sizeof(float)) {
      return of_level<level>(sErfcInv_LA_Table, sErfcInv_HA_Table, sErfcInv_LA_Table);
    } else {
      return of_level<level>(dErfcInv_LA_Table, dErfcInv_HA_Table, dErfcInv_EP_Table);
    }
  }

  template <class T>
  static int slow(const T* x, T* y) {
    return erfinv_cout_rare(x, y);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
