// SPDX-License-Identifier: MIT
// MulByConj: a times the conjugate of b, by the formulas of Mul with the sign of bi turned.
#pragma once

#include "../mul/complex_mul.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class Mul>
struct MulByConj : Mul {
  using T = typename Mul::T;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "MulByConj";

  template <class V>
  static void lane(V ar, V ai, V br, V bi, V& re, V& im) {
    Mul::lane(ar, ai, br, -bi, re, im);
  }
  template <class V, size_t vectors>
  int pass(const V (&x)[4][vectors], V (&y)[2][vectors]) const requires requires(const Mul& mul) {
    mul.pass(x, y);
  }
  {
    V turned[4][vectors];
#pragma GCC unroll 8
    for (size_t k = 0; k < vectors; ++k) {
      for (int part = 0; part < 3; ++part) turned[part][k] = x[part][k];
      turned[3][k] = -x[3][k];
    }
    return Mul::pass(turned, y);
  }
  static int slow(const T* a, const T* b, T* r) {
    const T turned = {b->re, -b->im};
    return Mul::slow(a, &turned, r);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
