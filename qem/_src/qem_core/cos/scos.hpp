// SPDX-License-Identifier: MIT
// sCos: the cosine of floats.
#pragma once

#include "../_heap/real/sincos.hpp"
#include "../frame/guarded.hpp"

namespace orv {
inline namespace ORV_TAG {

template <Level level>
struct SCos : SAngleKernel<level> {
  static constexpr int block = 8;
  static constexpr char _QEM_THISFUNC_NAME[] = "vsCos";

  template <class V>
  static V lane(V x) {
    return cosine_of(quarter_of<level>(x));
  }

  static int slow(const float* x, float* y) {
    float sine;
    return _dSinCos(*x, &sine, y);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
