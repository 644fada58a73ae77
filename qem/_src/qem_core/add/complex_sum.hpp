// SPDX-License-Identifier: MIT
// Add and Sub of complex numbers: each part rounded once, under the caller's control words.
#pragma once

#include "../frame/complex_overflow.hpp"
#include "../frame/function_name.hpp"
#include "../frame/guarded.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class Complex, bool subtracts>
struct ComplexSum {
  using T = Complex;
  using PartsInTurn = void;
  static constexpr int block = 4;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME =
      subtracts ? FunctionName<T>("Sub") : FunctionName<T>("Add");
  static constexpr Environment environment = environment_none;

  template <class V, size_t vectors>
  int pass(const V (&x)[4][vectors], V (&y)[2][vectors]) const {
    V any = {};
#pragma GCC unroll 8
    for (size_t k = 0; k < vectors; ++k) {
      y[0][k] = sum(x[0][k], x[2][k]);
      y[1][k] = sum(x[1][k], x[3][k]);
      any = either(any, either(infinite(y[0][k]), infinite(y[1][k])));
    }
    if (__builtin_expect(mask_of(any) == 0, true)) return 0;
    return by_vector<V, vectors>(
        [&](int k) { return interleaved_mask(infinite(y[0][k]), infinite(y[1][k])); });
  }

  static int slow(const T* a, const T* b, T* r) {
    *r = {sum(a->re, b->re), sum(a->im, b->im)};
    return complex_overflow(*a, *b, *r);
  }

 private:
  template <class V>
  static V sum(V a, V b) {
    return subtracts ? a - b : a + b;
  }
};

}  // namespace ORV_TAG
}  // namespace orv
