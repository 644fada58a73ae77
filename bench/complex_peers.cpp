// SPDX-License-Identifier: MIT
// Complex functions beside those of the C library, which std::complex calls. No open library has
// them for vectors.
#include <complex>

#include "peers.hpp"

namespace orv_bench {
namespace {

template <class C, class R>
std::complex<R> number(const C& z) {
  return {z.re, z.im};
}

template <class C, class R, std::complex<R> (*f)(const std::complex<R>&)>
void unary(int32_t n, const C* a, C* r) {
  for (int32_t i = 0; i < n; ++i) {
    const std::complex<R> y = f(number<C, R>(a[i]));
    r[i] = {y.real(), y.imag()};
  }
}

template <class C, class R, R (*f)(const std::complex<R>&)>
void real_of(int32_t n, const C* a, R* r) {
  for (int32_t i = 0; i < n; ++i) r[i] = f(number<C, R>(a[i]));
}
template <class C, class R>
void quotient(int32_t n, const C* a, const C* b, C* r) {
  for (int32_t i = 0; i < n; ++i) {
    const std::complex<R> y = number<C, R>(a[i]) / number<C, R>(b[i]);
    r[i] = {y.real(), y.imag()};
  }
}
template <class C, class R>
void power(int32_t n, const C* a, const C* b, C* r) {
  for (int32_t i = 0; i < n; ++i) {
    const std::complex<R> y = std::pow(number<C, R>(a[i]), number<C, R>(b[i]));
    r[i] = {y.real(), y.imag()};
  }
}
template <class C, class R>
void power_of_one(int32_t n, const C* a, C b, C* r) {
  for (int32_t i = 0; i < n; ++i) {
    const std::complex<R> y = std::pow(number<C, R>(a[i]), number<C, R>(b));
    r[i] = {y.real(), y.imag()};
  }
}

template <class C, class R>
std::vector<Function> functions_of(char type) {
  const auto row = [&](const char* name, auto* f) {
    return Function{type, name, -3, 3, {{"libm", orv_call::of(f)}}};
  };
  return {
      row("Abs", real_of<C, R, std::abs>),
      row("Arg", real_of<C, R, std::arg>),
      row("Acos", unary<C, R, std::acos>),
      row("Acosh", unary<C, R, std::acosh>),
      row("Asin", unary<C, R, std::asin>),
      row("Asinh", unary<C, R, std::asinh>),
      row("Atan", unary<C, R, std::atan>),
      row("Atanh", unary<C, R, std::atanh>),
      row("Cos", unary<C, R, std::cos>),
      row("Cosh", unary<C, R, std::cosh>),
      row("Div", quotient<C, R>),
      row("Exp", unary<C, R, std::exp>),
      row("Ln", unary<C, R, std::log>),
      row("Log10", unary<C, R, std::log10>),
      row("Pow", power<C, R>),
      row("Powx", power_of_one<C, R>),
      row("Sin", unary<C, R, std::sin>),
      row("Sinh", unary<C, R, std::sinh>),
      row("Sqrt", unary<C, R, std::sqrt>),
      row("Tan", unary<C, R, std::tan>),
      row("Tanh", unary<C, R, std::tanh>),
  };
}

}  // namespace

std::vector<Function> complex_functions() {
  std::vector<Function> all = functions_of<QemComplexFloat, float>('c');
  for (Function& f : functions_of<QemComplexDouble, double>('z')) all.push_back(std::move(f));
  return all;
}

}  // namespace orv_bench
