// The frame of kernels that run under whatever control words the caller has: blocks, and a tail
// padded to one more block. The padding repeats a real element, which raises nothing of its own.
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

template <class Op>
void padded_block(const typename Op::T* a, typename Op::T* r) {
  using V = Wide<typename Op::T>;
  constexpr int vectors = Op::block * Op::width / lanes<V>;
  V y[vectors];
#pragma GCC unroll 8
  for (int k = 0; k < vectors; ++k) y[k] = Op::lane(load<V>(a + k * lanes<V>));
#pragma GCC unroll 8
  for (int k = 0; k < vectors; ++k) store(r + k * lanes<V>, y[k]);
}

template <class Op>
void padded(int32_t n, const typename Op::T* a, typename Op::T* r) {
  using T = typename Op::T;
  constexpr int width = Op::width;
  constexpr size_t element = width * sizeof(T);
  const int32_t blocks_end = n > 0 ? n & ~(Op::block - 1) : 0;
  for (int32_t i = 0; i < blocks_end; i += Op::block) {
    padded_block<Op>(a + i * width, r + i * width);
  }
  const int32_t rest = n - blocks_end;
  if (rest <= 0) return;
  T x[Op::block * width], y[Op::block * width];
  for (int k = 0; k < Op::block; ++k) {
    const int32_t source = blocks_end + (k < rest ? k : 0);
    memcpy(x + k * width, a + source * width, element);
  }
  padded_block<Op>(x, y);
  memcpy(r + blocks_end * width, y, rest * element);
}

}  // namespace ORV_TAG
}  // namespace orv
