// SPDX-License-Identifier: MIT
// CIS: cos(x) + i sin(x) of real x. Floats go through lanes of double.
#pragma once

#include "../_heap/real/sincos.hpp"
#include "../frame/guarded.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class Real, class Complex>
struct Cis {
  using In = Real;
  using Out = Complex;
  using Work = double;
  static constexpr int block = 4;
  static constexpr char _QEM_THISFUNC_NAME[] = "zCIS_HA";  // as the scalar entry of both types
  static constexpr Environment environment =
      sizeof(Real) == sizeof(float) ? environment_x87_double : environment_x87_extended;

  template <class V>
  static void lane(V x, V& re, V& im) {
    SinCos<Real>::lane(x, im, re);
  }
  template <class V>
  static int rare(V x) {
    return SinCos<Real>::rare(x);
  }

  static int slow(const In* x, Out* r) { return _dSinCos(*x, &r->im, &r->re); }
};

}  // namespace ORV_TAG
}  // namespace orv
