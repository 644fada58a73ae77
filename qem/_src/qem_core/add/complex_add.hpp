// Add of complex numbers: each part rounded once, under the caller's control words.
#pragma once

#include "../frame/complex_overflow.hpp"
#include "../frame/function_name.hpp"
#include "../frame/guarded.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class Complex>
struct ComplexAdd {
  using T = Complex;
  using PartsInTurn = void;
  static constexpr int block = 4;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Add";
  static constexpr Environment environment = environment_none;

  template <class V, size_t vectors>
  int pass(const V (&x)[4][vectors], V (&y)[2][vectors]) const {
    V any = {};
#pragma GCC unroll 8
    for (size_t k = 0; k < vectors; ++k) {
      y[0][k] = x[0][k] + x[2][k];
      y[1][k] = x[1][k] + x[3][k];
      any = either(any, either(infinite(y[0][k]), infinite(y[1][k])));
    }
    if (__builtin_expect(mask_of(any) == 0, true)) return 0;
    return by_vector<V, vectors>(
        [&](int k) { return interleaved_mask(infinite(y[0][k]), infinite(y[1][k])); });
  }

  static int slow(const T* a, const T* b, T* r) {
    *r = {a->re + b->re, a->im + b->im};
    return complex_overflow(*a, *b, *r);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
