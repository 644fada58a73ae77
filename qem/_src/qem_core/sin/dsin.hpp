// SPDX-License-Identifier: MIT
// dSin: the sine of doubles.
#pragma once

#include "../_heap/real/dangle.hpp"

namespace orv {
inline namespace ORV_TAG {

template <Level level>
struct DSin {
  using T = double;
  static constexpr int block = 8;
  static constexpr char _QEM_THISFUNC_NAME[] = "vdSin";
  static constexpr Environment environment = environment_mode;

  template <class V, size_t vectors>
  static int pass(const V (&x)[1][vectors], V (&y)[1][vectors]) {
    return pass_of_angles<level>(x[0], [&](const ReducedAngle<V>& angle, int k) {
      y[0][k] = SinCosOfAngle<level, V>(angle).sine();
    });
  }

  static int slow(const double* x, double* y) { return not_an_angle(*x, y); }
};

}  // namespace ORV_TAG
}  // namespace orv
