// SPDX-License-Identifier: MIT
// The frame of kernels that are a scalar routine, called once an element.
//
//   struct Op {
//     using T = QemComplexDouble;                          // element type, or In and Out
//     static constexpr char _QEM_THISFUNC_NAME[] = "vzExp";
//     static constexpr Environment environment = environment_extended;
//     int call(const T* x, T* y) const;                    // one element; returns a status code
//   };
//
// With two inputs, call takes both addresses; scalar arguments are members. The routine works on
// copies, so a result may replace its argument and vectors may begin at any byte.
#pragma once

#include "guarded.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class Op, class... Inputs>
void scalar_calls_on(const Op& op, int32_t n, Out<Op>* r, const In<Op>* a, Inputs... others) {
  const ControlWords words(Op::environment);
  for (int32_t i = 0; i < n; ++i) {
    const auto call = [&](In<Op> x, auto... rest) {
      Out<Op> y;
      const int code = op.call(&x, &rest..., &y);
      memcpy(r + i, &y, sizeof y);
      return code;
    };
    const int code = call(load_one(a + i), load_one(others + i)...);
    if (code != 0) report(code, i, a, r, r, Op::_QEM_THISFUNC_NAME);
  }
}

/// r[i] = f(a[i])
template <class Op>
void scalar_calls(const Op& op, int32_t n, const In<Op>* a, Out<Op>* r) {
  scalar_calls_on(op, n, r, a);
}

/// r[i] = f(a[i], b[i])
template <class Op>
void scalar_calls(const Op& op, int32_t n, const In<Op>* a, const In<Op>* b, Out<Op>* r) {
  scalar_calls_on(op, n, r, a, b);
}

}  // namespace ORV_TAG
}  // namespace orv
