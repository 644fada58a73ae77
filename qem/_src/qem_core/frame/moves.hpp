// SPDX-License-Identifier: MIT
// The frame of kernels that only move elements: under the caller's control words, by way of the x87
// unit, which quiets a signalling NaN and leaves every other value as it is.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include "../simd/vectors.hpp"

namespace orv {
inline namespace ORV_TAG {

inline void move_element(const double* from, double* to) {
  asm volatile("fldl %1\n\tfstpl %0" : "=m"(*to) : "m"(*from) : "st");
}
inline void move_element(const float* from, float* to) {
  asm volatile("flds %1\n\tfstps %0" : "=m"(*to) : "m"(*from) : "st");
}

/// The flag of a kernel's last argument that asks for 32-bit counts, strides, indices and masks.
inline constexpr int32_t narrow_counts = 1;

// The x87 unit moves an element a cycle at most, so counting and stepping are shared by several.

/// y[i to] = a[i from]
template <class Count, class T>
void move_strided(Count n, const T* a, ptrdiff_t from, T* y, ptrdiff_t to) {
  constexpr int unroll = 4;
  for (; n >= unroll; n -= unroll) {
#pragma GCC unroll 4
    for (int k = 0; k < unroll; ++k) move_element(a + k * from, y + k * to);
    a += unroll * from, y += unroll * to;
  }
  for (; n > 0; --n, a += from, y += to) move_element(a, y);
}

/// Steps as wide as the flag says, too.
template <class T>
void move_strided(int32_t narrow, int64_t n, const T* a, int64_t from, T* y, int64_t to) {
  if (narrow == narrow_counts) {
    move_strided(static_cast<int32_t>(n), a, static_cast<int32_t>(from), y,
                 static_cast<int32_t>(to));
  } else {
    move_strided(n, a, static_cast<ptrdiff_t>(from), y, static_cast<ptrdiff_t>(to));
  }
}

/// Calls move(i, word of i) for i from 0 below n; counts and words are as wide as the flag says.
template <class Move>
[[gnu::always_inline]] inline void for_each_word(int32_t narrow, int64_t n, const void* words,
                                                 Move move) {
  const auto go = [&](auto count, const auto* word) {
#pragma GCC unroll 4
    for (decltype(count) i = 0; i < count; ++i) move(i, load_one(word + i));
  };
  if (narrow == narrow_counts) {
    go(static_cast<int32_t>(n), static_cast<const int32_t*>(words));
  } else {
    go(n, static_cast<const int64_t*>(words));
  }
}

/// y[i] = a[ia[i]]
template <class T>
void pack_indexed(int32_t narrow, int64_t n, const T* a, const void* ia, T* y) {
  for_each_word(narrow, n, ia, [=](auto i, auto from) { move_element(a + from, y + i); });
}

/// y[iy[i]] = a[i]
template <class T>
void unpack_indexed(int32_t narrow, int64_t n, const T* a, T* y, const void* iy) {
  for_each_word(narrow, n, iy, [=](auto i, auto to) { move_element(a + i, y + to); });
}

/// y[k++] = a[i] where ma[i] is not 0
template <class T>
void pack_masked(int32_t narrow, int64_t n, const T* a, const void* ma, T* y) {
  for_each_word(narrow, n, ma, [=](auto i, auto mask) mutable {
    if (mask != 0) move_element(a + i, y++);
  });
}

/// y[i] = a[k++] where my[i] is not 0
template <class T>
void unpack_masked(int32_t narrow, int64_t n, const T* a, T* y, const void* my) {
  for_each_word(narrow, n, my, [=](auto i, auto mask) mutable {
    if (mask != 0) move_element(a++, y + i);
  });
}

}  // namespace ORV_TAG
}  // namespace orv
