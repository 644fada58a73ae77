// SPDX-License-Identifier: MIT
// Complex functions: references from the real functions of MPFR, by formulas in which nothing
// cancels that the bits of a Big would not cover. Points that are not finite are left to the rows
// of special values.
#include <cmath>

#include "big.hpp"
#include "families.hpp"

namespace orv_test {
namespace {

struct BigComplex {
  Big re, im;
};
BigComplex operator-(const BigComplex& z) { return {-z.re, -z.im}; }
BigComplex conj(const BigComplex& z) { return {z.re, -z.im}; }
BigComplex operator*(const BigComplex& a, const BigComplex& b) {
  return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}
BigComplex times_i(const BigComplex& z) { return {-z.im, z.re}; }
BigComplex times_minus_i(const BigComplex& z) { return {z.im, -z.re}; }

/// A size that may be infinite, times a sine or cosine.
Big turned_by(const Big& size, const Big& turn) {
  if (turn.zero()) return size.negative() ? -turn : turn;
  return size * turn;
}

BigComplex exp(const BigComplex& z) {
  const Big size = z.re.by<mpfr_exp>();
  return {turned_by(size, z.im.by<mpfr_cos>()), turned_by(size, z.im.by<mpfr_sin>())};
}
BigComplex cosh(const BigComplex& z) {
  return {turned_by(z.re.by<mpfr_cosh>(), z.im.by<mpfr_cos>()),
          turned_by(z.re.by<mpfr_sinh>(), z.im.by<mpfr_sin>())};
}
BigComplex sinh(const BigComplex& z) {
  return {turned_by(z.re.by<mpfr_sinh>(), z.im.by<mpfr_cos>()),
          turned_by(z.re.by<mpfr_cosh>(), z.im.by<mpfr_sin>())};
}
/// By the double angle; its exponential is taken out, for it may be out of any range.
BigComplex tanh(const BigComplex& z) {
  const Big x = z.re.by<mpfr_abs>(), e = (Big(-2) * x).by<mpfr_exp>(), y = Big(2) * z.im;
  const Big divisor = Big(1) + e * e + Big(2) * e * y.by<mpfr_cos>();
  const Big re = -(Big(-4) * x).by<mpfr_expm1>() / divisor;
  return {with_sign(re, z.re), Big(2) * e * y.by<mpfr_sin>() / divisor};
}
/// Next to the unit circle by what |z|^2 exceeds 1.
BigComplex log(const BigComplex& z) {
  const Big angle = Big::with<mpfr_atan2>(z.im, z.re), size = Big::with<mpfr_hypot>(z.re, z.im);
  if (std::abs(size.get_d() - 1) > 0.001) return {size.by<mpfr_log>(), angle};
  const Big x = z.re.by<mpfr_abs>(), y = z.im.by<mpfr_abs>();
  const Big greater = Big::with<mpfr_max>(x, y), other = Big::with<mpfr_min>(x, y);
  const Big excess = (greater - Big(1)) * (greater + Big(1)) + other * other;
  return {excess.by<mpfr_log1p>() / Big(2), angle};
}
BigComplex log10(const BigComplex& z) {
  const BigComplex natural = log(z);
  const Big ln10 = Big(10).by<mpfr_log>();
  return {natural.re / ln10, natural.im / ln10};
}
BigComplex sqrt(const BigComplex& z) {
  const Big size = (z.re.by<mpfr_abs>() + Big::with<mpfr_hypot>(z.re, z.im)) / Big(2);
  const Big greater = size.by<mpfr_sqrt>();
  const Big smaller = greater.zero() ? z.im : z.im / (Big(2) * greater);
  if (!z.re.negative()) return {greater, smaller};
  return {smaller.by<mpfr_abs>(), with_sign(greater, z.im)};
}

// W. Kahan, "Branch cuts for complex elementary functions" (1987).
BigComplex root_of_one_plus(const BigComplex& z) { return sqrt({Big(1) + z.re, z.im}); }

BigComplex acos(const BigComplex& z) {
  const BigComplex minus = root_of_one_plus(-z), plus = root_of_one_plus(z);
  return {Big(2) * Big::with<mpfr_atan2>(minus.re, plus.re),
          (conj(plus) * minus).im.by<mpfr_asinh>()};
}
BigComplex acosh(const BigComplex& z) {
  const BigComplex angle = acos(z);
  return {angle.im.by<mpfr_abs>(), with_sign(angle.re, z.im)};
}
BigComplex asin(const BigComplex& z) {
  const BigComplex minus = root_of_one_plus(-z), plus = root_of_one_plus(z);
  return {Big::with<mpfr_atan2>(z.re, (minus * plus).re), (conj(minus) * plus).im.by<mpfr_asinh>()};
}
BigComplex atanh(const BigComplex& z) {
  const Big x = z.re.by<mpfr_abs>(), less = Big(1) - x, square = z.im * z.im;
  const Big ratio = Big(4) * x / (less * less + square);
  const Big angle = Big::with<mpfr_atan2>(Big(2) * z.im, less * (Big(1) + x) - square);
  return {with_sign(ratio.by<mpfr_log1p>() / Big(4), z.re), angle / Big(2)};
}

// The circular functions are the hyperbolic ones turned by a right angle, and the inverse ones
// likewise.
template <BigComplex (*f)(const BigComplex&)>
BigComplex turned(const BigComplex& z) {
  return times_minus_i(f(times_i(z)));
}
BigComplex cos(const BigComplex& z) { return cosh(times_i(z)); }
BigComplex asinh(const BigComplex& z) { return times_minus_i(asin(times_i(z))); }

void put(mpfr_t* y, const BigComplex& z) {
  mpfr_set(y[0], z.re.get(), MPFR_RNDN);
  mpfr_set(y[1], z.im.get(), MPFR_RNDN);
}
template <BigComplex (*f)(const BigComplex&)>
void complex_unary(mpfr_t* y, mpfr_t* x) {
  put(y, f({Big(x[0]), Big(x[1])}));
}
void complex_power(mpfr_t* y, mpfr_t* x) {
  put(y, exp(BigComplex{Big(x[2]), Big(x[3])} * log({Big(x[0]), Big(x[1])})));
}

void size_of(mpfr_t* y, mpfr_t* x) { mpfr_hypot(y[0], x[0], x[1], MPFR_RNDN); }
void complex_quotient(mpfr_t* y, mpfr_t* x) {
  const BigComplex a{Big(x[0]), Big(x[1])}, b{Big(x[2]), Big(x[3])}, product = a * conj(b);
  const Big divisor = b.re * b.re + b.im * b.im;
  put(y, {product.re / divisor, product.im / divisor});
}

bool finite_point(const double* x, int numbers) {
  for (int k = 0; k < numbers; ++k) {
    if (!std::isfinite(x[k])) return false;
  }
  return true;
}
/// The phase keeps 54 bits while the product of exponent and logarithm is small.
bool usual_power(const double* x, int numbers) {
  if (!finite_point(x, numbers) || (x[0] == 0 && x[1] == 0)) return false;
  const double size = std::abs(std::log(std::hypot(x[0], x[1]))) + std::abs(std::atan2(x[1], x[0]));
  return std::hypot(x[2], x[3]) * size < 1000;
}
bool not_zero(const double* x, int numbers) {
  return finite_point(x, numbers) && !(x[0] == 0 && x[1] == 0);
}
bool not_by_zero(const double* x, int numbers) {
  return finite_point(x, numbers) && !(x[2] == 0 && x[3] == 0);
}
/// In doubles the norm of a denormal quotient is not what its parts are rounded to.
bool normal_quotient(const double* x, int numbers) {
  if (!not_by_zero(x, numbers)) return false;
  const auto greater_part = [](const double* z) {
    return std::fmax(std::abs(z[0]), std::abs(z[1]));
  };
  const double a = greater_part(x), b = greater_part(x + 2);
  return a == 0 || std::ilogb(a) - std::ilogb(b) > -1020;
}
/// Without the poles 1 and -1, or i and -i.
bool off_poles(const double* x, int numbers) {
  return finite_point(x, numbers) && !(std::hypot(x[0], x[1]) == 1 && x[0] * x[1] == 0);
}

/// Any size, usual sizes, next to the branch points 1, -1, i, -i, and next to the unit circle:
/// parts are drawn in turn.
template <class R>
void complex_inputs(Inputs<R>& in) {
  constexpr int least = is_float<R> ? -23 : -52;
  in.patterns_of_both_signs(0.1, 0, std::numeric_limits<R>::infinity());
  in.linear(0.2, -4, 4);
  in.patterns_of_both_signs(0.2, 1e-6, 1e6);
  const auto add = [&](double re, double im) {
    in.pairs.push_back({static_cast<R>(re), static_cast<R>(im)});
  };
  for (int i = 0; i < in.amount(0.1); ++i) {
    const auto tiny = [&] {
      const double unit = in.random.unit();
      const double size = std::ldexp(unit, -static_cast<int>(in.random.below(-least + 8)));
      return in.random.below(2) != 0 ? size : -size;
    };
    const double one = in.random.below(2) != 0 ? 1 : -1, near = one + tiny(), far = tiny();
    add(near, far), add(far, near);
    const double u = in.random.unit(), v = std::sqrt(1 - u * u);
    add(u, v), add(-v, u);
    const double near_one = std::sqrt(0.8 + 0.4 * in.random.unit());  // of logarithms that cancel
    add(near_one * u, near_one * v), add(-near_one * v, near_one * u);
  }
}

/// Of results that overflow and underflow.
template <class R>
void growing_inputs(Inputs<R>& in) {
  complex_inputs(in);
  in.linear(0.2, is_float<R> ? -110 : -760, is_float<R> ? 110 : 760);
}

/// Of small logarithms, in the table rows next to 1, where angles are small, too.
template <class R>
void log_inputs(Inputs<R>& in) {
  complex_inputs(in);
  for (int i = 0; i < in.amount(0.4); ++i) {
    const double near = 1 + 0.1 * (in.random.unit() - 0.5);
    const int exponent = -6 - static_cast<int>(in.random.below(60));
    const double far = std::ldexp(in.random.unit(), exponent);
    in.pairs.push_back({static_cast<R>(near), static_cast<R>(far)});
    in.pairs.push_back({static_cast<R>(far), static_cast<R>(-near)});
  }
}

}  // namespace

std::vector<Function> complex_functions() {
  const auto unary = [](const char* name, auto exact, bool grows, auto covers) {
    Function f{
        "cz", name, Approximate, exact, nullptr, complex_inputs<float>, complex_inputs<double>};
    if (grows) f.inputs_s = growing_inputs<float>, f.inputs_d = growing_inputs<double>;
    f.covers = covers;
    return f;
  };
  Function pow{"cz", "Pow", Approximate, complex_power, nullptr, ORV_INPUTS(complex_inputs)};
  Function powx{"cz", "Powx", Approximate, complex_power, nullptr, ORV_INPUTS(complex_inputs)};
  pow.covers = powx.covers = usual_power;
  const auto div = [](const char* type, bool by_norm, auto covers) {
    Function f{type, "Div", Approximate, complex_quotient, nullptr, ORV_INPUTS(complex_inputs)};
    f.ep_in_middle = true, f.by_norm = by_norm, f.covers = covers;
    return f;
  };
  pow.by_norm = powx.by_norm = true;  // next to a multiple of pi the phase leaves one part few bits
  const Function abs{"cz", "Abs", Approximate, size_of, nullptr, ORV_INPUTS(complex_inputs)};
  Function ln = unary("Ln", complex_unary<log>, false, not_zero);
  ln.inputs_s = log_inputs<float>, ln.inputs_d = log_inputs<double>;
  return {
      abs,
      unary("Acos", complex_unary<acos>, false, finite_point),
      unary("Acosh", complex_unary<acosh>, false, finite_point),
      unary("Asin", complex_unary<asin>, false, finite_point),
      unary("Asinh", complex_unary<asinh>, false, finite_point),
      unary("Atan", complex_unary<turned<atanh>>, false, off_poles),
      unary("Atanh", complex_unary<atanh>, false, off_poles),
      unary("Cos", complex_unary<cos>, true, finite_point),
      unary("Cosh", complex_unary<cosh>, true, finite_point),
      unary("Exp", complex_unary<exp>, true, finite_point),
      ln,
      unary("Log10", complex_unary<log10>, false, not_zero),
      unary("Sin", complex_unary<turned<sinh>>, true, finite_point),
      unary("Sinh", complex_unary<sinh>, true, finite_point),
      unary("Sqrt", complex_unary<sqrt>, false, finite_point),
      unary("Tan", complex_unary<turned<tanh>>, false, finite_point),
      unary("Tanh", complex_unary<tanh>, false, finite_point),
      div("c", false, not_by_zero),
      div("z", true, normal_quotient),
      pow,
      powx,
  };
}

}  // namespace orv_test
