// The frame of kernels that only move elements: under the caller's control words, by way of the x87
// unit, which quiets a signalling NaN and leaves every other value as it is.
#pragma once

#include <stdint.h>

#include <type_traits>

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

/// y[i to] = a[i from]. Places are computed in the counter's width, wrapping around.
template <class Count, class T>
void move_strided(Count n, const T* a, Count from, T* y, Count to) {
  using Unsigned = std::make_unsigned_t<Count>;
  Unsigned source = 0, target = 0;
  for (Count i = 0; i < n; ++i) {
    move_element(a + static_cast<Count>(source), y + static_cast<Count>(target));
    source += static_cast<Unsigned>(from), target += static_cast<Unsigned>(to);
  }
}

/// The same with counts as wide as the flag says.
template <class T>
void move_strided(int32_t narrow, int64_t n, const T* a, int64_t from, T* y, int64_t to) {
  if (narrow == narrow_counts) {
    move_strided<int32_t>(static_cast<int32_t>(n), a, static_cast<int32_t>(from), y,
                          static_cast<int32_t>(to));
  } else {
    move_strided<int64_t>(n, a, from, y, to);
  }
}

}  // namespace ORV_TAG
}  // namespace orv
