// SPDX-License-Identifier: MIT
// Mul of complex numbers: (ar br - ai bi) + i (ar bi + ai br).
//
// EP takes that as it stands. HA of floats goes through double, where products are exact. HA of
// doubles has each product and each sum in two parts (T. J. Dekker, 1971; D. E. Knuth, 1969), so
// that nothing is lost where the products cancel.
#pragma once

#include "../frame/complex_overflow.hpp"
#include "../frame/function_name.hpp"
#include "../frame/guarded.hpp"
#include "../frame/level.hpp"
#include "../simd/exact.hpp"

namespace orv {
inline namespace ORV_TAG {

/// The product as it stands, in the type of the parts or a wider one.
template <class V>
void complex_product(V ar, V ai, V br, V bi, V& re, V& im) {
  re = ar * br - ai * bi;
  im = ar * bi + ai * br;
}

/// EP: reports nothing.
template <class Complex>
struct ComplexMul {
  using T = Complex;
  static constexpr int block = 4;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Mul";
  static constexpr Environment environment = environment_mode;

  template <class V>
  static void lane(V ar, V ai, V br, V bi, V& re, V& im) {
    complex_product(ar, ai, br, bi, re, im);
  }
  template <class V>
  static int rare(V, V, V, V) {
    return 0;
  }
  static int slow(const T*, const T*, T*) { return QEM_STATUS_OK; }
};

/// HA of floats.
struct CMul {
  using T = QemComplexFloat;
  using Work = double;
  static constexpr int block = 4;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Mul";
  static constexpr Environment environment = environment_x87_double;

  template <class V, size_t vectors>
  int pass(const V (&x)[4][vectors], V (&y)[2][vectors]) const {
    return by_vector<V, vectors>([&](int k) {
      complex_product(x[0][k], x[1][k], x[2][k], x[3][k], y[0][k], y[1][k]);
      constexpr double below_infinity = 0x1.FFFFFEFFFFFFFp127;  // the last that rounds to a float
      const V largest = maximum(and_bits(number_or_zero(y[0][k]), ~bits_of(-0.0)),
                                and_bits(number_or_zero(y[1][k]), ~bits_of(-0.0)));
      return mask_of(greater(largest, splat<V>(below_infinity)));
    });
  }

  static int slow(const T* a, const T* b, T* r) {
    double re, im;
    complex_product<double>(a->re, a->im, b->re, b->im, re, im);
    *r = {static_cast<float>(re), static_cast<float>(im)};
    return complex_overflow(*a, *b, *r);
  }
};

/// r, or where it is zero and the sum of rounded products is, too, that sum, whose sign is right.
template <class V>
V with_sign_of_zero(V r, V sum) {
  return select(both(equal(r, V{}), equal(sum, V{})), sum, r);
}
inline long double with_sign_of_zero(long double r, long double sum) {
  return r == 0 && sum == 0 ? sum : r;
}

/// a b + c d to little more than half an ulp.
template <class V>
V sum_of_products(const Halves<V>& a, const Halves<V>& b, const Halves<V>& c, const Halves<V>& d) {
  const TwoParts<V> p = exact_product(a, b), q = exact_product(c, d);
  const TwoParts<V> upper = exact_sum(p.hi, q.hi), lower = exact_sum(p.lo, q.lo);
  const TwoParts<V> middle = exact_sum(upper.hi, lower.hi);
  return with_sign_of_zero(middle.hi + (middle.lo + (upper.lo + lower.lo)), upper.hi);
}

template <class V>
void exact_complex_product(V ar, V ai, V br, V bi, V& re, V& im) {
  const Halves<V> a_re(ar), a_im(ai), b_re(br), b_im(bi);
  re = sum_of_products(a_re, b_re, -a_im, b_im);
  im = sum_of_products(a_re, b_im, a_im, b_re);
}

/// HA of doubles. Lanes take numbers whose products neither overflow nor lose low bits to
/// underflow; the slow path has the range of extended arithmetic.
struct ZMul {
  using T = QemComplexDouble;
  static constexpr int block = 4;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Mul";
  static constexpr Environment environment = environment_x87_extended;
  static constexpr double smallest = 0x1p-480, largest = 0x1p500;

  template <class V>
  static void lane(V ar, V ai, V br, V bi, V& re, V& im) {
    exact_complex_product(ar, ai, br, bi, re, im);
  }
  template <class V>
  static int rare(V ar, V ai, V br, V bi) {
    int mask = 0;
    for (const V x : {ar, ai, br, bi}) {
      const V magnitude = and_bits(x, ~bits_of(-0.0));
      // Zero is in range.
      mask |= outside(either(magnitude, both(equal(x, V{}), splat<V>(1.0))), smallest, largest);
    }
    return mask;
  }

  static int slow(const T* a, const T* b, T* r) {
    const auto is_finite = [](const T* z) {
      return __builtin_isfinite(z->re) && __builtin_isfinite(z->im);
    };
    long double re, im;
    if (is_finite(a) && is_finite(b)) {
      exact_complex_product<long double>(a->re, a->im, b->re, b->im, re, im);
    } else {
      complex_product<long double>(a->re, a->im, b->re, b->im, re, im);
    }
    *r = {static_cast<double>(re), static_cast<double>(im)};
    return complex_overflow(*a, *b, *r);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
