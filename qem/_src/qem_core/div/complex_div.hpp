// SPDX-License-Identifier: MIT
// Div of complex numbers: a conj(b)/|b|^2.
//
// EP takes that with b brought near 1 by a power of two, so that |b|^2 stays in range. HA of floats
// goes through double, where products are exact. HA of doubles takes the quotient q of the plain
// formula to some 25 bits, so few that what it leaves, a - q b, can be had almost without error:
// the remainder divided by b is a correction, and the one rounding is that of its sum with q.
#pragma once

#include "../_heap/complex/slow_lane.hpp"
#include "../mul/complex_mul.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class V>
struct ComplexLanes {
  V re, im;
};
template <class V>
ComplexLanes<V> operator*(const ComplexLanes<V>& a, const ComplexLanes<V>& b) {
  return {a.re * b.re - a.im * b.im, a.im * b.re + a.re * b.im};
}

/// 1/b, times a power of two as |b|^2 needs it: dividend/|b|^2 conj(b).
template <class V>
ComplexLanes<V> complex_reciprocal(V br, V bi, Lane<V> dividend = 1) {
  const V t = dividend / (br * br + bi * bi);
  return {br * t, bi * -t};
}

// ---- Slow paths --------------------------------------------------------------------------------

template <class Complex>
bool infinite_number(const Complex& z) {
  return __builtin_isinf(z.re) || __builtin_isinf(z.im);
}
template <class Complex>
bool finite_number(const Complex& z) {
  return __builtin_isfinite(z.re) && __builtin_isfinite(z.im);
}

/// 1 for an infinity, otherwise 0, with the sign of x.
template <class R>
R unit_of_infinity(R x) {
  return static_cast<R>(__builtin_copysign(__builtin_isinf(x) ? 1.0 : 0.0, x));
}

/// What is no quotient of numbers (C99, annex G.5.1): zero divisors, infinities and NaN. R has room
/// for the sum of two numbers.
template <class R, class Complex>
Complex quotient_without_number(Complex a, Complex b) {
  const auto narrowed = [](R re, R im) {
    using P = decltype(a.re);
    return Complex{static_cast<P>(re), static_cast<P>(im)};
  };
  const R infinity = __builtin_inf();
  if (b.re == 0 && b.im == 0) {
    const R size = __builtin_copysign(__builtin_inf(), b.re);
    return narrowed(size * a.re, size * a.im);
  }
  R scale = __builtin_nan("");
  if (infinite_number(a) && finite_number(b)) {
    scale = infinity, a = {unit_of_infinity(a.re), unit_of_infinity(a.im)};
  } else if (finite_number(a) && infinite_number(b)) {
    scale = 0, b = {unit_of_infinity(b.re), unit_of_infinity(b.im)};
  }
  const R ar = a.re, ai = a.im, br = b.re, bi = b.im;
  return narrowed(scale * (ar * br + ai * bi), scale * (ai * br - ar * bi));
}

/// A divisor and a dividend that have a quotient.
template <class Complex>
bool have_quotient(const Complex& a, const Complex& b) {
  return finite_number(a) && finite_number(b) && !(b.re == 0 && b.im == 0);
}

/// Floats in doubles, which have their products exactly.
inline int complex_div_slow(const QemComplexFloat* a, const QemComplexFloat* b,
                            QemComplexFloat* r) {
  if (have_quotient(*a, *b)) {
    const double ar = a->re, ai = a->im, br = b->re, bi = b->im;
    const double t = 1 / (br * br + bi * bi);
    *r = {static_cast<float>((ar * br + ai * bi) * t), static_cast<float>((ai * br - ar * bi) * t)};
  } else {
    *r = quotient_without_number<double>(*a, *b);
  }
  return complex_overflow(*a, *b, *r);
}

/// Doubles in extended numbers, which have the range and, in parts, the products.
inline int complex_div_slow(const QemComplexDouble* pa, const QemComplexDouble* pb,
                            QemComplexDouble* r) {
  const ControlWords words(environment_slow_lane);
  const QemComplexDouble a = {heeding_words(pa->re), heeding_words(pa->im)};
  const QemComplexDouble b = {heeding_words(pb->re), heeding_words(pb->im)};
  if (have_quotient(a, b)) {
    const Halves<long double> ar(a.re), ai(a.im), br(b.re), bi(b.im);
    const long double divisor = br.whole * br.whole + bi.whole * bi.whole;
    *r = {static_cast<double>(sum_of_products(ar, br, ai, bi) / divisor),
          static_cast<double>(sum_of_products(ai, br, -ar, bi) / divisor)};
  } else {
    *r = quotient_without_number<long double>(a, b);
  }
  return complex_overflow(a, b, *r);
}

// ---- Lanes -------------------------------------------------------------------------------------

/// What is infinite or NaN in either part.
template <class V>
int no_finite_number(V re, V im) {
  using F = Format<Lane<V>>;
  return high_word_above(absolute(re) + absolute(im), F::high_word(F::largest));
}

/// EP: reports nothing.
template <class Complex>
struct ComplexDiv {
  using T = Complex;
  static constexpr int block = 8;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Div";
  static constexpr Environment environment = environment_mode;

  template <class V, size_t vectors>
  int pass(const V (&x)[4][vectors], V (&y)[2][vectors]) const {
    return by_vector<V, vectors>([&](int k) {
      const V scale = scale_of(x[2][k], x[3][k]);
      // Half the quotient before the scale is undone: the greatest parts of a have room then.
      const auto q = ComplexLanes<V>{x[0][k], x[1][k]} *
                     complex_reciprocal(x[2][k] * scale, x[3][k] * scale, 0.5f);
      const V re = q.re * scale, im = q.im * scale;
      y[0][k] = re + re, y[1][k] = im + im;
      return no_finite_number(y[0][k], y[1][k]);
    });
  }

  static int slow(const T* a, const T* b, T* r) {
    complex_div_slow(a, b, r);
    return QEM_STATUS_OK;
  }

 private:
  /// The power of two that brings the greater part to a size from 1 to 16; that of normal numbers
  /// is normal, too.
  template <class V>
  static V scale_of(V re, V im) {
    using F = Format<Lane<V>>;
    using Bits = typename F::Bits;
    constexpr Bits fours = Bits{2 * F::bias - 2} << F::fraction_bits;
    constexpr Bits sum = Bits{2 * F::bias} << F::fraction_bits;
    const V greater_part = maximum(absolute(re), absolute(im));
    return as_vector<V>(
        subtract<V>(bits_of(splat<V>(from_bits(sum))), bits_of(and_bits(greater_part, fours))));
  }
};

/// HA of floats.
struct CDiv {
  using T = QemComplexFloat;
  using Work = double;
  static constexpr int block = 4;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Div";
  static constexpr Environment environment = environment_x87_double;

  template <class V, size_t vectors>
  int pass(const V (&x)[4][vectors], V (&y)[2][vectors]) const {
    return by_vector<V, vectors>([&](int k) {
      const V ar = x[0][k], ai = x[1][k], br = x[2][k], bi = x[3][k];
      const V t = 1 / (br * br + bi * bi);
      y[0][k] = (ar * br + ai * bi) * t, y[1][k] = (ai * br - ar * bi) * t;
      constexpr double large = 0x1p127;
      return high_word_above(absolute(y[0][k]) + absolute(y[1][k]),
                             Format<double>::high_word(large) - 1);
    });
  }

  static int slow(const T* a, const T* b, T* r) { return complex_div_slow(a, b, r); }
};

/// A number rounded to a grid that its norm tells, 2^-24 of a power of two below that; its parts
/// keep their signs where they become zero.
template <class V>
struct OnGrid {
  V size;
  ComplexLanes<V> upper;

  explicit OnGrid(const ComplexLanes<V>& z) : size(absolute(z.re) + absolute(z.im)) {
    constexpr uint64_t exponent = uint64_t{0x7FF} << 52;
    const V shifter = and_bits(size, exponent) * 0x1.8p28;
    const auto round = [&](V x) {
      return either((x + shifter) - shifter, and_bits(x, bits_of(-0.0)));
    };
    upper = {round(z.re), round(z.im)};
  }
};

/// HA of doubles. Lanes take divisors and quotients that are far from the ends of the range, so
/// that all products are, too.
struct ZDiv {
  using T = QemComplexDouble;
  static constexpr int block = 4;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Div";
  static constexpr Environment environment = environment_x87_extended;
  static constexpr double smallest = 0x1p-300, largest = 0x1p300;

  template <class V, size_t vectors>
  int pass(const V (&x)[4][vectors], V (&y)[2][vectors]) const {
    return by_vector<V, vectors>([&](int k) {
      const ComplexLanes<V> a = {x[0][k], x[1][k]}, b = {x[2][k], x[3][k]};
      const ComplexLanes<V> reciprocal = complex_reciprocal(b.re, b.im);
      const OnGrid<V> b_grid(b), q(a * reciprocal);
      const ComplexLanes<V> u = b_grid.upper, v = q.upper, uv = v * u;  // exact
      const ComplexLanes<V> rest = v * ComplexLanes<V>{b.re - u.re, b.im - u.im};
      const ComplexLanes<V> correction =
          ComplexLanes<V>{(a.re - uv.re) - rest.re, (a.im - uv.im) - rest.im} * reciprocal;
      y[0][k] = v.re + correction.re, y[1][k] = v.im + correction.im;
      using F = Format<double>;
      constexpr uint32_t least = F::high_word(smallest), most = F::high_word(largest);
      return high_word_outside(b_grid.size, least, most) | high_word_outside(q.size, least, most);
    });
  }

  static int slow(const T* a, const T* b, T* r) { return complex_div_slow(a, b, r); }
};

}  // namespace ORV_TAG
}  // namespace orv
