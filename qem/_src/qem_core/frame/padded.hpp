// SPDX-License-Identifier: MIT
// The frame of kernels that run under whatever control words the caller has: blocks, then each
// element of the tail in all lanes of a vector. Lanes filled with a real element raise nothing of
// their own. The inputs of a block, and of the tail, are read before any result of it is written.
//
//   struct Op {
//     using T = double;                   // element type; a complex one is its parts in turn
//     static constexpr int block = 4;     // elements a pass
//     static V lane(V x);                 // for any vector type
//   };
#pragma once

#include "elements.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class Op>
[[gnu::flatten]] void padded(int32_t n, const typename Op::T* a, typename Op::T* r) {
  using T = typename Op::T;
  using V = Wide<Part<T>>;
  constexpr int vectors = Op::block * parts<T> / lanes<V>;
  const int32_t blocks_end = n > 0 ? n & ~(Op::block - 1) : 0;
  int32_t i = 0;
  for (; i < blocks_end; i += Op::block) {
    V y[vectors];
#pragma GCC unroll 8
    for (int k = 0; k < vectors; ++k) y[k] = Op::lane(load<V>(parts_of(a + i) + k * lanes<V>));
#pragma GCC unroll 8
    for (int k = 0; k < vectors; ++k) store<V>(parts_of(r + i) + k * lanes<V>, y[k]);
  }
  V tail[Op::block];
  for (int32_t k = 0; i + k < n; ++k) tail[k] = Op::lane(repeat<V>(a + i + k));
  for (int32_t k = 0; i + k < n; ++k) memcpy(r + i + k, &tail[k], sizeof(T));
}

}  // namespace ORV_TAG
}  // namespace orv
