// SPDX-License-Identifier: MIT
// sSin: the sine of floats.
#pragma once

#include "../_heap/real/sincos.hpp"
#include "../frame/guarded.hpp"

namespace orv {
inline namespace ORV_TAG {

template <Level level>
struct SSin : SAngleKernel<level> {
  static constexpr int block = level == Level::HA ? 16 : 8;
  static constexpr char _QEM_THISFUNC_NAME[] = "vsSin";

  template <class V>
  static V lane(V x) {
    return sine_of(quarter_of<level>(x));
  }

  static int slow(const float* x, float* y) {
    float cosine;
    return _dSinCos(*x, y, &cosine);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
