// The frame of kernels that are a scalar routine, called once an element.
//
//   struct Op {
//     using T = QemComplexDouble;                          // element type
//     static constexpr char _QEM_THISFUNC_NAME[] = "vzExp";
//     static constexpr Environment environment = {.x87 = x87_extended};
//     static int call(const T* x, T* y);                   // one element; returns a status code
//   };
#pragma once

#include "control_words.hpp"
#include "report.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class Op>
void scalar_calls(int32_t n, const typename Op::T* a, typename Op::T* r) {
  const ControlWords words(Op::environment);
  for (int32_t i = 0; i < n; ++i) {
    const int code = Op::call(a + i, r + i);
    if (code != 0) report(code, i, a, r, r, Op::_QEM_THISFUNC_NAME);
  }
}

}  // namespace ORV_TAG
}  // namespace orv
