// The frame of kernels whose scalar routine can do any element: passes of two or four elements, and
// where one element of a pass is special, the routine does the whole pass. A last single element
// goes to the routine as well.
//
//   struct Op {
//     using T = double;
//     static constexpr int pass = 2;                       // elements a pass, 2 or 4
//     static constexpr char _QEM_THISFUNC_NAME[] = "vdAsinh";
//     static constexpr Environment environment = {.x87 = x87_extended};
//     static V lane(V x);                                  // the formula, for any vector type
//     static int special(V x);                             // mask of special lanes
//     static int scalar(const T* x, T* y);                 // any element; returns a status code
//   };
#pragma once

#include "../simd/vectors.hpp"
#include "control_words.hpp"
#include "report.hpp"

namespace orv {
inline namespace ORV_TAG {

/// The error call of a unit, which adds the function's name. One vector each way, so the first
/// input and the result stand twice.
template <class Op>
void _ErrorCall(int32_t code, int32_t index, const typename Op::T* a, typename Op::T* r) {
  report(code, index, a, r, r, Op::_QEM_THISFUNC_NAME);
}

template <class Op>
[[gnu::noinline]] void scheduled_scalar(int32_t i, int32_t count, const typename Op::T* a,
                                        typename Op::T* r) {
  for (int32_t k = i; k < i + count; ++k) {
    const typename Op::T x = load_one(a + k);  // r may be a
    typename Op::T y;
    const int code = Op::scalar(&x, &y);
    memcpy(r + k, &y, sizeof y);
    if (code != 0) _ErrorCall<Op>(code, k, a, r);
  }
}

/// `count` elements from `i` on. Where the vector has more lanes, elements fill them again.
template <class Op, int count>
void scheduled_pass(int32_t i, const typename Op::T* a, typename Op::T* r) {
  using T = typename Op::T;
  using V = Narrow<T>;
  constexpr int step = count < lanes<V> ? count : lanes<V>;
  constexpr int vectors = count / step;
  T results[vectors * lanes<V>];
  int special = 0;
#pragma GCC unroll 4
  for (int k = 0; k < vectors; ++k) {
    T filled[lanes<V>];
    for (int lane = 0; lane < lanes<V>; ++lane) {
      filled[lane] = load_one(a + i + k * step + lane % step);
    }
    const V x = load<V>(filled);
    special |= Op::special(x);
    store(results + k * step, Op::lane(x));
  }
  if (special != 0) {
    scheduled_scalar<Op>(i, count, a, r);
  } else {
    memcpy(r + i, results, count * sizeof(T));
  }
}

template <class Op>
[[gnu::flatten]] void scheduled(int32_t n, const typename Op::T* a, typename Op::T* r) {
  const ControlWords words(Op::environment);
  int32_t i = 0;
  for (; i + Op::pass <= n; i += Op::pass) scheduled_pass<Op, Op::pass>(i, a, r);
  for (; i + 2 <= n; i += 2) scheduled_pass<Op, 2>(i, a, r);
  if (i < n) scheduled_scalar<Op>(i, 1, a, r);
}

}  // namespace ORV_TAG
}  // namespace orv
