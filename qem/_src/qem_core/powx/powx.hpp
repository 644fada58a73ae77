// SPDX-License-Identifier: MIT
// Powx: x^b with one exponent for all elements. Nine exponents have functions of their own, which
// are more accurate and know roots of negative numbers; all others go the way of Pow.
#pragma once

#include <orv/qem_functions.h>

#include "../frame/elementwise.hpp"
#include "../frame/function_name.hpp"
#include "../frame/guarded.hpp"
#include "../frame/level.hpp"

namespace orv {
inline namespace ORV_TAG {

/// That of the two kernel tables which is of type T.
template <class T>
constexpr auto of_type(const auto* s, const auto* d) {
  if constexpr (sizeof(T) == sizeof(float)) {
    return s;
  } else {
    return d;
  }
}

/// The kernel for x^b if b is an exponent with a function of its own.
template <Level level, class T>
auto kernel_of_exponent(T b) {
  using Table = decltype(of_type<T>(orv_qem_kernel_sInv_ttab, orv_qem_kernel_dInv_ttab));
  const struct {
    T exponent;
    Table kernels;
  } rows[] = {
      {-1, of_type<T>(orv_qem_kernel_sInv_ttab, orv_qem_kernel_dInv_ttab)},
      {T{0.5}, of_type<T>(orv_qem_kernel_sSqrt_ttab, orv_qem_kernel_dSqrt_ttab)},
      {T{-0.5}, of_type<T>(orv_qem_kernel_sInvSqrt_ttab, orv_qem_kernel_dInvSqrt_ttab)},
      {T{1} / 3, of_type<T>(orv_qem_kernel_sCbrt_ttab, orv_qem_kernel_dCbrt_ttab)},
      {T{-1} / 3, of_type<T>(orv_qem_kernel_sInvCbrt_ttab, orv_qem_kernel_dInvCbrt_ttab)},
      {T{2} / 3, of_type<T>(orv_qem_kernel_sPow2o3_ttab, orv_qem_kernel_dPow2o3_ttab)},
      {T{1.5}, of_type<T>(orv_qem_kernel_sPow3o2_ttab, orv_qem_kernel_dPow3o2_ttab)},
  };
  for (const auto& row : rows) {
    if (b == row.exponent) return row.kernels[static_cast<int>(level)];
  }
  return decltype(+rows[0].kernels[0]){};
}

template <class Element>
struct Copy {
  using T = Element;
  template <class V>
  static V lane(V x) {
    return x;
  }
};

template <class Element>
struct Square {
  using T = Element;
  template <class V>
  static V lane(V x) {
    return x * x;
  }
};

/// The pass and the slow path of Pow.
template <class Pow>
struct Powx {
  using T = typename Pow::T;
  using Work = orv::Work<Pow>;
  static constexpr int block = 8;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Powx";
  static constexpr Environment environment = environment_mode;

  T b;

  template <class V, size_t vectors>
  int pass(const V (&x)[1][vectors], V (&r)[1][vectors]) const {
    V y[vectors];
    for (V& exponents : y) exponents = splat<V>(b);
    return Pow::pass(x[0], y, r[0]);
  }

  int slow(const T* x, T* r) const { return Pow::slow(x, &b, r); }
};

template <Level level, template <Level> class Pow, class T>
void powx(int32_t n, const T* a, T b, T* r) {
  if (b == 1) return elementwise<Copy<T>>(n, r, a);
  if (b == 2) return elementwise<Square<T>>(n, r, a);
  if (const auto kernel = kernel_of_exponent<level>(b)) return kernel(n, a, r);
  guarded(Powx<Pow<level>>{b}, n, a, r);
}

}  // namespace ORV_TAG
}  // namespace orv
