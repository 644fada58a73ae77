// SPDX-License-Identifier: MIT
// dPow: x^y of doubles.
#pragma once

#include "pow_rare.hpp"

namespace orv {
inline namespace ORV_TAG {

inline int vdpow_cout_rare(const double* x, const double* y, double* r) {
  return pow_rare(*x, *y, *r);
}

template <Level level>
struct DPow {
  using T = double;
  static constexpr int block = 8;
  static constexpr char _QEM_THISFUNC_NAME[] = "vdPow";
  static constexpr Environment environment = environment_mode;

  template <class V, size_t vectors>
  static int pass(const V (&x)[vectors], const V (&y)[vectors], V (&r)[vectors]) {
    return pow_pass<vdpow_data<level>>(x, y, r);
  }
  template <class V, size_t vectors>
  static int pass(const V (&in)[2][vectors], V (&out)[1][vectors]) {
    return pass(in[0], in[1], out[0]);
  }

  static int slow(const double* x, const double* y, double* r) { return vdpow_cout_rare(x, y, r); }
};

}  // namespace ORV_TAG
}  // namespace orv
