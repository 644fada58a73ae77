// SPDX-License-Identifier: MIT
// Tables of polynomials: a row of coefficients for each interval, looked up lane by lane.
#pragma once

#include "../../simd/lookup.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class T>
inline constexpr auto sign_bit = typename Format<T>::Bits{1} << (8 * sizeof(T) - 1);

/// Rows of `entries` Pairs or Quads; their numbers are in the low 16 bits of the lanes.
template <class V, int entries>
class RowsByLowBits {
 public:
  explicit RowsByLowBits(V v) : words_(v) {}

  template <class Entry>
  const Entry* entry(const Entry* table, int lane) const {
    const size_t row = static_cast<uint16_t>(words_.word[lane * (sizeof(Lane<V>) / 4)]);
    return table + row * entries;
  }

 private:
  Words<V> words_;
};

/// Rows of `entries` Pairs or Quads for equal parts of the numbers from each power of two to the
/// next, 2^bits of them, from 1 on.
template <class V, int entries, int bits>
class RowsFromOne {
 public:
  explicit RowsFromOne(V v) : words_(v) {}

  template <class Entry>
  const Entry* entry(const Entry* table, int lane) const {
    constexpr bool is_double = sizeof(Lane<V>) == 8;
    constexpr int shift = (is_double ? 20 : 23) - bits;  // of the word that holds the exponent
    constexpr size_t first = size_t{Format<Lane<V>>::bias} << bits;
    const size_t row = words_.word[is_double ? 2 * lane + 1 : lane] >> shift;
    return table + (row - first) * entries;
  }

 private:
  Words<V> words_;
};

/// Each lane's row, number j of it in c[j].
template <class Index, class V, int n>
void lookup_row(const Pair<Lane<V>>* table, const Index& row, V (&c)[n]) {
#pragma GCC unroll 8
  for (int j = 0; j < n; j += 2) lookup(table + j / 2, row, c[j], c[j + 1]);
}
template <class Index, class V>
void lookup_row(const Quad<Lane<V>>* table, const Index& row, V (&c)[4]) {
  lookup(table, row, c);
}

}  // namespace ORV_TAG
}  // namespace orv
