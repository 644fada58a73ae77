// SPDX-License-Identifier: MIT
// dSinCos: the sine and the cosine of doubles, with the bits of dSin and dCos.
#pragma once

#include "../_heap/real/dangle.hpp"

namespace orv {
inline namespace ORV_TAG {

template <Level level>
struct DSinCosKernel {
  using T = double;
  static constexpr int block = 8;
  static constexpr char _QEM_THISFUNC_NAME[] = "vdSinCos";
  static constexpr Environment environment = environment_mode;

  template <class V, size_t vectors>
  static int pass(const V (&x)[1][vectors], V (&y)[2][vectors]) {
    return pass_of_angles<level>(x[0], [&](const ReducedAngle<V>& angle, int k) {
      const SinCosOfAngle<level, V> functions(angle);
      y[0][k] = functions.sine(), y[1][k] = functions.cosine();
    });
  }

  static int slow(const double* x, double* sine, double* cosine) {
    const int code = not_an_angle(*x, sine);
    *cosine = *sine;
    return code;
  }
};

}  // namespace ORV_TAG
}  // namespace orv
