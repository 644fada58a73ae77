// SPDX-License-Identifier: MIT
// Erf: the error function, 2/sqrt(pi) times the integral of e^(-t^2) from 0 to x.
//
// r is the multiple of a step nearest to |x|, and a table has a polynomial in d = |x| - r for each
// r up to the first from which on the result is 1. The sign is put back at the end, so that the
// function is odd to the bit. Row 0 is an odd polynomial and keeps the relative accuracy of small
// results.
//
// A level's record of constants:
//   table     rows of `entries` Pairs or Quads of coefficients, ascending
//   per_unit  rows up to 1
//   in_parts  the first two coefficients are in two parts
//   least     of the numbers for the lanes; if it is 0, all are, and NaN
#pragma once

#include "../_heap/real/root.hpp"
#include "../_heap/real/table_rows.hpp"
#include "../frame/function_name.hpp"
#include "../frame/guarded.hpp"
#include "../frame/level.hpp"
#include "../simd/polynomial.hpp"

namespace orv {
inline namespace ORV_TAG {

/// c[0] + c[1] + (c[2] + c[3]) d + c[4] d^2 + ...: the product of the upper halves of c1 and d is
/// exact, and their sum with c0 keeps its rounding error.
template <class V, int n>
V sum_in_parts(const V (&c)[n], V d) {
  const V d2 = d * d;
  const V d_hi = upper_half(d), linear = c[2] * d_hi, sum = c[0] + linear;
  const V lost = linear - (sum - c[0]);
  const V rest = by_pairs<n - 4>(c + 4, d, d2) * d2 + (c[2] * (d - d_hi) + c[3] * d);
  return sum + (rest + (lost + c[1]));
}

template <class V, int n>
V sum_of_row(const V (&c)[n], V d) {
  if constexpr (n <= 4) {
    return horner(c, d);
  } else {
    const V d2 = d * d;
    return by_pairs<n - 2>(c + 2, d, d2) * d2 + (c[1] * d + c[0]);
  }
}

/// Lanes of |x| that the table is not for: NaN, and what is below D::least.
template <class D, class V>
V out_of_rows(V a) {
  return compare<_CMP_NGE_UQ>(a, splat<V>(D::least));
}

template <class D, class V>
V erf_lane(V x) {
  using T = Lane<V>;
  constexpr int row_size = sizeof D::table[0] * D::entries;
  constexpr T last = T(sizeof D::table / row_size - 1) / D::per_unit;
  constexpr T shifter = Format<T>::shifter / D::per_unit;

  const V absolute = and_bits(x, ~sign_bit<T>), out = out_of_rows<D>(absolute);
  const V a = minimum(select(out, V{}, absolute), splat<V>(last));  // quiet on NaN
  const V k = a + shifter;
  V d = a - (k - shifter);
  if constexpr (D::least == 0) d = d + both(out, x);
  V c[row_size / sizeof(T)];
  lookup_row(D::table, RowsByLowBits<V, D::entries>(k), c);
  const V sign = and_bits(x, sign_bit<T>);
  if constexpr (D::in_parts) {
    return either(sum_in_parts(c, d), sign);
  } else {
    return either(sum_of_row(c, d), sign);
  }
}

/// A kernel of elements T with the constants D.
template <class Element, class D>
struct ErfKernel {
  using T = Element;
  using Work = typename D::Work;
  static constexpr int block = 64 / sizeof(Work);
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Erf";
  static constexpr Environment environment = environment_mode;

  /// Only where D::least is above 0; otherwise NaN comes out of the lanes.
  template <class V>
  static int rare(V x) {
    if constexpr (D::least == 0) return 0;
    return mask_of(out_of_rows<D>(and_bits(x, ~sign_bit<Lane<V>>)));
  }

  template <class V>
  static V lane(V x) {
    return erf_lane<D>(x);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
