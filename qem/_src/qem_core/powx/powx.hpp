// Powx: x^b with one exponent for all elements. Nine exponents have functions of their own, which
// are more accurate and know roots of negative numbers; all others go the way of Pow.
#pragma once

#include <string_view>

#include "../frame/elementwise.hpp"
#include "../frame/function_name.hpp"
#include "../frame/guarded.hpp"
#include "../frame/level.hpp"

namespace orv {
inline namespace ORV_TAG {

/// r[i] = f(a[i])
template <class T>
using UnaryKernel = void (*)(int32_t n, const T* a, T* r);

/// The kernel table of a function, null while it is not built.
consteval const void* kernel_table(char type, std::string_view function) {
  struct Row {
    char type;
    std::string_view function;
    const void* kernels;
  };
  constexpr Row rows[] = {
#define ORV_READY(t, F, ...) {#t[0], #F, orv_qem_kernel_##t##F##_ttab},
#define ORV_PLANNED(...)
#include "qem/_bt_gen_ia32/functions.def"
#undef ORV_READY
#undef ORV_PLANNED
  };
  for (const Row& row : rows) {
    if (row.type == type && row.function == function) return row.kernels;
  }
  return nullptr;
}

/// The kernel for x^b if b is an exponent with a function of its own.
template <Level level, class T>
UnaryKernel<T> kernel_of_exponent(T b) {
  struct Row {
    T exponent;
    const void* kernels;
  };
  static constexpr char t = type_letter<T>;
  static constexpr Row rows[] = {
      {-1, kernel_table(t, "Inv")},
      {T{0.5}, kernel_table(t, "Sqrt")},
      {T{-0.5}, kernel_table(t, "InvSqrt")},
      {T{1} / 3, kernel_table(t, "Cbrt")},
      {T{-1} / 3, kernel_table(t, "InvCbrt")},
      {T{2} / 3, kernel_table(t, "Pow2o3")},
      {T{1.5}, kernel_table(t, "Pow3o2")},
  };
  for (const Row& row : rows) {
    if (b != row.exponent || row.kernels == nullptr) continue;
    return static_cast<const UnaryKernel<T>*>(row.kernels)[static_cast<int>(level)];
  }
  return nullptr;
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
