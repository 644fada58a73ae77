// SPDX-License-Identifier: MIT
// Kernels that call a complex scalar routine once an element.
#pragma once

#include "../../frame/function_name.hpp"
#include "../../frame/scalar_call.hpp"
#include "complex.hpp"

namespace orv {
inline namespace ORV_TAG {

/// Results in floats come as one word, the real part in its low half.
inline void unpack(uint64_t word, QemComplexFloat* y) {
  static_assert(sizeof word == sizeof *y);
  memcpy(y, &word, sizeof word);
}

enum class Reports : bool { nothing, overflow };

/// Finite arguments with a result that has an infinite part.
template <class T, class... Arguments>
int overflow_status(const T& y, const Arguments&... x) {
  const auto finite = [](const T& z) { return is_finite(z.re) && is_finite(z.im); };
  const bool infinite = is_infinite(y.re) || is_infinite(y.im);
  return infinite && (finite(x) && ...) ? QEM_STATUS_OVERFLOW : QEM_STATUS_OK;
}

template <class T_, auto routine, FunctionName<T_> name, Reports reports = Reports::nothing>
struct ScalarRoutine {
  using T = T_;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = name;
  static constexpr Environment environment = environment_extended;

  int call(const T* x, T* y) const { return checked(y, *x); }
  int call(const T* x, const T* x2, T* y) const { return checked(y, *x, *x2); }

 private:
  template <class... Arguments>
  static int checked(T* y, const Arguments&... x) {
    compute(y, x...);
    return reports == Reports::overflow ? overflow_status(*y, x...) : QEM_STATUS_OK;
  }
  static void compute(QemComplexDouble* y, const QemComplexDouble& x) { routine(y, x.re, x.im); }
  static void compute(QemComplexDouble* y, const QemComplexDouble& a, const QemComplexDouble& b) {
    routine(y, a.re, a.im, b.re, b.im);
  }
  static void compute(QemComplexFloat* y, const QemComplexFloat& x) {
    unpack(routine(x.re, x.im), y);
  }
  static void compute(QemComplexFloat* y, const QemComplexFloat& a, const QemComplexFloat& b) {
    unpack(routine(a.re, a.im, b.re, b.im), y);
  }
};

/// A routine of two arguments with the second fixed.
template <class Routine>
struct SecondFixed {
  using T = typename Routine::T;
  static constexpr auto _QEM_THISFUNC_NAME = Routine::_QEM_THISFUNC_NAME;
  static constexpr Environment environment = Routine::environment;
  T second;

  int call(const T* x, T* y) const { return Routine{}.call(x, &second, y); }
};

}  // namespace ORV_TAG
}  // namespace orv
