// SPDX-License-Identifier: MIT
// How continuous distributions take their uniform numbers, and go over arrays.
#pragma once

#include <orv/zok.h>

namespace orv {
inline namespace ORV_TAG {

/// n numbers on [0, 1), or where told.
inline int32_t draw_uniforms(StreamState* stream, int32_t n, double* r, double a = 0,
                             double b = 1) {
  return _zokdRngUniform(0, stream, n, r, a, b);
}
inline int32_t draw_uniforms(StreamState* stream, int32_t n, float* r, float a = 0, float b = 1) {
  return _zoksRngUniform(0, stream, n, r, a, b);
}

/// work(count, part) for consecutive parts of an array, each small enough to stay in the cache
/// between one pass and the next. For work that treats each element by itself.
template <class T, class Work>
void in_parts(int32_t n, T* r, const Work& work) {
  constexpr int32_t most = 2048;
  while (n > 0) {
    const int32_t count = n < most ? n : most;
    work(count, r);
    r += count;
    n -= count;
  }
}

/// The greater of the two; x if it is not a number.
template <class T>
T at_least(T least, T x) {
  return least > x ? least : x;
}

}  // namespace ORV_TAG
}  // namespace orv
