// The frame of kernels that run under whatever control words the caller has: blocks, then each
// element of the tail in all lanes of a vector. Lanes filled with a real element raise nothing of
// their own.
//
//   struct Op {
//     using T = double;
//     static constexpr int width = 1;     // numbers an element: 2 for complex
//     static constexpr int block = 4;     // elements a pass
//     static V lane(V x);                 // for any vector type
//   };
#pragma once

#include <orv/qem.h>

#include "../simd/vectors.hpp"

namespace orv {
inline namespace ORV_TAG {

/// One element of `width` numbers in all lanes.
template <int width>
__m128 fill(const float* p) {
  if constexpr (width == 1) return _mm_set1_ps(load_one(p));
  double both;
  memcpy(&both, p, sizeof both);
  return _mm_castpd_ps(_mm_set1_pd(both));
}
template <int width>
__m128d fill(const double* p) {
  if constexpr (width == 1) return _mm_set1_pd(load_one(p));
  return load<__m128d>(p);
}

template <class Op>
[[gnu::flatten]] void padded(int32_t n, const typename Op::T* a, typename Op::T* r) {
  using V = Wide<typename Op::T>;
  constexpr int width = Op::width;
  constexpr int vectors = Op::block * width / lanes<V>;
  const int32_t blocks_end = n > 0 ? n & ~(Op::block - 1) : 0;
  int32_t i = 0;
  for (; i < blocks_end; i += Op::block) {
    V y[vectors];
#pragma GCC unroll 8
    for (int k = 0; k < vectors; ++k) y[k] = Op::lane(load<V>(a + i * width + k * lanes<V>));
#pragma GCC unroll 8
    for (int k = 0; k < vectors; ++k) store<V>(r + i * width + k * lanes<V>, y[k]);
  }
  for (; i < n; ++i) {
    const auto y = Op::lane(fill<width>(a + i * width));
    memcpy(r + i * width, &y, width * sizeof(*r));
  }
}

}  // namespace ORV_TAG
}  // namespace orv
