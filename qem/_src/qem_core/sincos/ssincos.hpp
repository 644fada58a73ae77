// SPDX-License-Identifier: MIT
// sSinCos: sine and cosine of floats, with the bits of sSin and sCos.
#pragma once

#include "../_heap/real/sincos.hpp"
#include "../frame/guarded.hpp"

namespace orv {
inline namespace ORV_TAG {

template <Level level>
struct SSinCosKernel : SAngleKernel<level> {
  static constexpr int block = level == Level::HA ? 16 : 8;
  static constexpr char _QEM_THISFUNC_NAME[] = "vsSinCos";

  template <class V>
  static void lane(V x, V& sine, V& cosine) {
    const Quarter<V> q = quarter_of<level>(x);
    sine = sine_of(q);
    cosine = cosine_of(q);
  }

  static int slow(const float* x, float* sine, float* cosine) { return _dSinCos(*x, sine, cosine); }
};

}  // namespace ORV_TAG
}  // namespace orv
