// SPDX-License-Identifier: MIT
// The frame of kernels that are exact, or rounded once, for every element: no slow path, no
// reports.
//
//   struct Op {
//     using T = double;
//     V lane(V x) const;           // or lane(V x, V y), for any vector type
//   };
//
// Scalar arguments are members.
//
// Results are those of ascending element-by-element evaluation, also where the output overlaps an
// input.
#pragma once

#include "control_words.hpp"
#include "elements.hpp"

namespace orv {
inline namespace ORV_TAG {

/// [r, r + n) shares bytes with [a, a + n) without being the same vector.
template <class T>
bool overlaps_partly(const T* a, const T* r, int32_t n) {
  const auto from = reinterpret_cast<uintptr_t>(a), to = reinterpret_cast<uintptr_t>(r);
  const auto distance = from < to ? to - from : from - to;
  return distance != 0 && distance < static_cast<uintptr_t>(n) * sizeof(T);
}

template <class Op, class... In>
void ascending(Op op, int32_t from, int32_t n, typename Op::T* r, const In*... a) {
  using V = Narrow<typename Op::T>;
  for (int32_t i = from; i < n; ++i) store_low(r + i, op.lane(repeat<V>(a + i)...));
}

/// Elements before `r` is aligned to the vector, at most `n`; none if it never will be.
template <class V>
int32_t elements_to_alignment(const Lane<V>* r, int32_t n) {
  const auto address = reinterpret_cast<uintptr_t>(r);
  if (address % sizeof(Lane<V>) != 0) return 0;
  const auto elements = static_cast<int32_t>((-address % sizeof(V)) / sizeof(Lane<V>));
  return elements < n ? elements : n;
}

/// Under the control words in force.
template <class Op, class... In>
[[gnu::flatten]] void elementwise_here(Op op, int32_t n, typename Op::T* r, const In*... a) {
  using V = Wide<typename Op::T>;
  constexpr int32_t short_vector = 6;
  constexpr int unroll = 4;
  constexpr int32_t block = unroll * lanes<V>;

  if (n <= short_vector || (overlaps_partly(a, r, n) || ...)) {
    ascending(op, 0, n, r, a...);
    return;
  }
  int32_t i = elements_to_alignment<V>(r, n);
  ascending(op, 0, i, r, a...);
  for (; i <= n - block; i += block) {
    V y[unroll];
#pragma GCC unroll 4
    for (int k = 0; k < unroll; ++k) y[k] = op.lane(load<V>(a + i + k * lanes<V>)...);
#pragma GCC unroll 4
    for (int k = 0; k < unroll; ++k) store<V>(r + i + k * lanes<V>, y[k]);
  }
  ascending(op, i, n, r, a...);
}

template <class Op, class... In>
void elementwise(int32_t n, typename Op::T* r, const In*... a) {
  const ControlWords words(environment_mode);
  elementwise_here(Op{}, n, r, a...);
}

}  // namespace ORV_TAG
}  // namespace orv
