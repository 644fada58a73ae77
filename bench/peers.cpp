// SPDX-License-Identifier: MIT
// The scalar C library, its vector math (x86-64 only) and SLEEF. All vector functions are those for
// AVX without FMA, the instruction set of our own fastest kernels.
#include "peers.hpp"

#include <math.h>
#include <sleef.h>
#include <string.h>

#include <cmath>
#include <functional>
#if ORV_HAVE_BOOST
#include <boost/math/special_functions/erf.hpp>
#endif

#include "support/inverse_error.hpp"

#ifdef __x86_64__
#define DECLARE_LIBMVEC(name)                  \
  extern "C" __m256d _ZGVcN4v_##name(__m256d); \
  extern "C" __m256 _ZGVcN8v_##name##f(__m256);
DECLARE_LIBMVEC(atan)
DECLARE_LIBMVEC(acos)
DECLARE_LIBMVEC(asin)
DECLARE_LIBMVEC(acosh)
DECLARE_LIBMVEC(asinh)
DECLARE_LIBMVEC(atanh)
DECLARE_LIBMVEC(cbrt)
DECLARE_LIBMVEC(cosh)
DECLARE_LIBMVEC(erf)
DECLARE_LIBMVEC(erfc)
DECLARE_LIBMVEC(exp)
DECLARE_LIBMVEC(expm1)
DECLARE_LIBMVEC(log)
DECLARE_LIBMVEC(log10)
DECLARE_LIBMVEC(log1p)
DECLARE_LIBMVEC(sin)
DECLARE_LIBMVEC(cos)
DECLARE_LIBMVEC(sinh)
DECLARE_LIBMVEC(tan)
extern "C" __m256d _ZGVcN4vv_atan2(__m256d, __m256d);
extern "C" __m256 _ZGVcN8vv_atan2f(__m256, __m256);
DECLARE_LIBMVEC(tanh)
extern "C" __m256d _ZGVcN4vv_pow(__m256d, __m256d);
extern "C" __m256 _ZGVcN8vv_powf(__m256, __m256);
#endif

namespace orv_bench {
namespace {

// ---- From a function of one vector to a function of n elements ---------------------------------

template <class T, T (*f)(T)>
void scalar(int32_t n, const T* a, T* r) {
  for (int32_t i = 0; i < n; ++i) r[i] = f(a[i]);
}

template <class T>
T element(const T* p, int32_t i) {
  return p[i];
}
template <class T>
T element(T number, int32_t) {
  return number;
}
template <class V, class T>
V vector(const T* p, int32_t i) {
  V x;
  memcpy(&x, p + i, sizeof x);
  return x;
}
template <class V, class T>
V vector(T number, int32_t) {
  return V{} + number;
}

/// The second operand is a vector, or one number for all.
template <class T, T (*f)(T, T), class B = const T*>
void scalar_of_two(int32_t n, const T* a, B b, T* r) {
  for (int32_t i = 0; i < n; ++i) r[i] = f(a[i], element(b, i));
}

template <class V, auto f, class T, class... In>
void by_vectors(int32_t n, T* r, In... a) {
  constexpr int32_t lanes = sizeof(V) / sizeof(T);
  int32_t i = 0;
  const auto rest = [&](auto p) {
    V x;
    for (int32_t k = 0; k < lanes; ++k) x[k] = element(p, i + k < n ? i + k : i);
    return x;
  };
  for (; i <= n - lanes; i += lanes) {
    const V y = f(vector<V>(a, i)...);
    memcpy(r + i, &y, sizeof y);
  }
  if (i == n) return;
  const V y = f(rest(a)...);
  for (int32_t k = 0; i + k < n; ++k) r[i + k] = y[k];
}

template <class T, class V, auto f>
void vectors(int32_t n, const T* a, T* r) {
  by_vectors<V, f>(n, r, a);
}
template <class T, class V, auto f, class B = const T*>
void vectors_of_two(int32_t n, const T* a, B b, T* r) {
  by_vectors<V, f>(n, r, a, b);
}

/// Sine and cosine by one call of a library, in two vectors or as complex numbers.
template <class T, class V, auto f>
void sines_and_cosines(int32_t n, const T* a, T* r1, T* r2) {
  constexpr int32_t lanes = sizeof(V) / sizeof(T);
  const auto call = [](const T* from, T* sine, T* cosine) {
    V v;
    memcpy(&v, from, sizeof v);
    const auto both = f(v);
    memcpy(sine, &both.x, sizeof v);
    memcpy(cosine, &both.y, sizeof v);
  };
  int32_t i = 0;
  for (; i <= n - lanes; i += lanes) call(a + i, r1 + i, r2 + i);
  if (i == n) return;
  T rest[lanes] = {}, sine[lanes], cosine[lanes];
  memcpy(rest, a + i, (n - i) * sizeof(T));
  call(rest, sine, cosine);
  memcpy(r1 + i, sine, (n - i) * sizeof(T));
  memcpy(r2 + i, cosine, (n - i) * sizeof(T));
}
template <class T, class V, auto f>
void complex_sines_and_cosines(int32_t n, const T* a, T* r) {
  constexpr int32_t lanes = sizeof(V) / sizeof(T);
  for (int32_t i = 0; i < n; i += lanes) {
    T x[lanes], sine[lanes], cosine[lanes];
    for (int32_t k = 0; k < lanes; ++k) x[k] = a[i + k < n ? i + k : i];
    V v;
    memcpy(&v, x, sizeof v);
    const auto both = f(v);
    memcpy(sine, &both.x, sizeof sine);
    memcpy(cosine, &both.y, sizeof cosine);
    for (int32_t k = 0; k < lanes && i + k < n; ++k) {
      r[2 * (i + k)] = cosine[k], r[2 * (i + k) + 1] = sine[k];
    }
  }
}

// ---- Loops as an application would write them --------------------------------------------------

template <class T, class Op>
void unary_loop(int32_t n, const T* a, T* r) {
  for (int32_t i = 0; i < n; ++i) r[i] = Op()(a[i]);
}
template <class T, class Op>
void binary_loop(int32_t n, const T* a, const T* b, T* r) {
  for (int32_t i = 0; i < n; ++i) r[i] = Op()(a[i], b[i]);
}
template <class T>
void modf_loop(int32_t n, const T* a, T* whole, T* rest) {
  for (int32_t i = 0; i < n; ++i) rest[i] = std::modf(a[i], whole + i);
}
template <class T>
void sincos_loop(int32_t n, const T* a, T* sine, T* cosine) {
  for (int32_t i = 0; i < n; ++i) sine[i] = std::sin(a[i]), cosine[i] = std::cos(a[i]);
}
template <class T, class C>
void cis_loop(int32_t n, const T* a, C* r) {
  for (int32_t i = 0; i < n; ++i) r[i] = {std::cos(a[i]), std::sin(a[i])};
}
template <class T>
void pack_loop(int64_t n, const T* a, int64_t incr, T* y, int32_t) {
  for (int64_t i = 0; i < n; ++i) y[i] = a[i * incr];
}
template <class T>
void unpack_loop(int64_t n, const T* a, T* y, int64_t incr, int32_t) {
  for (int64_t i = 0; i < n; ++i) y[i * incr] = a[i];
}

template <class T>
void linear_frac_loop(int32_t n, const T* a, const T* b, T scalea, T shifta, T scaleb, T shiftb,
                      T* r) {
  for (int32_t i = 0; i < n; ++i) r[i] = (scalea * a[i] + shifta) / (scaleb * b[i] + shiftb);
}
template <class T>
void pack_v_loop(int64_t n, const T* a, const void* ia, T* y, int32_t) {
  for (int64_t i = 0; i < n; ++i) y[i] = a[static_cast<const int32_t*>(ia)[i]];
}
template <class T>
void unpack_v_loop(int64_t n, const T* a, T* y, const void* iy, int32_t) {
  for (int64_t i = 0; i < n; ++i) y[static_cast<const int32_t*>(iy)[i]] = a[i];
}
template <class T>
void pack_m_loop(int64_t n, const T* a, const void* ma, T* y, int32_t) {
  for (int64_t i = 0, k = 0; i < n; ++i) {
    if (static_cast<const int32_t*>(ma)[i] != 0) y[k++] = a[i];
  }
}
template <class T>
void unpack_m_loop(int64_t n, const T* a, T* y, const void* my, int32_t) {
  for (int64_t i = 0, k = 0; i < n; ++i) {
    if (static_cast<const int32_t*>(my)[i] != 0) y[i] = a[k++];
  }
}

struct Absolute {
  template <class T>
  T operator()(T x) const {
    return std::fabs(x);
  }
};
struct Reciprocal {
  template <class T>
  T operator()(T x) const {
    return 1 / x;
  }
};
using Floor = decltype([](auto x) { return std::floor(x); });
using Ceil = decltype([](auto x) { return std::ceil(x); });
using Trunc = decltype([](auto x) { return std::trunc(x); });
using Round = decltype([](auto x) { return std::round(x); });
using Rint = decltype([](auto x) { return std::rint(x); });
using NearbyInt = decltype([](auto x) { return std::nearbyint(x); });
struct Square {
  template <class T>
  T operator()(T x) const {
    return x * x;
  }
};
struct SquaredCubeRoot {
  template <class T>
  T operator()(T x) const {
    return Square()(std::cbrt(x));
  }
};
struct ReciprocalCubeRoot {
  template <class T>
  T operator()(T x) const {
    return 1 / std::cbrt(x);
  }
};
struct NormalDistribution {
  template <class T>
  T operator()(T x) const {
    return std::erfc(x * T(-M_SQRT1_2)) / 2;
  }
};
struct Conjugate {
  template <class T>
  T operator()(T x) const {
    return {x.re, -x.im};
  }
};
struct ComplexSum {
  template <class T>
  T operator()(T x, T y) const {
    return {x.re + y.re, x.im + y.im};
  }
};
struct ComplexProduct {
  template <class T>
  T operator()(T x, T y) const {
    return {x.re * y.re - x.im * y.im, x.re * y.im + x.im * y.re};
  }
};

struct ComplexDifference {
  template <class T>
  T operator()(T x, T y) const {
    return {x.re - y.re, x.im - y.im};
  }
};
struct ProductByConjugate {
  template <class T>
  T operator()(T x, T y) const {
    return {x.re * y.re + x.im * y.im, x.im * y.re - x.re * y.im};
  }
};

template <class F>
std::vector<Contender> loop(F* f) {
  return {{"loop", orv_call::of(f)}};
}

template <int immediate>
__m256d rounded(__m256d x) {
  return _mm256_round_pd(x, immediate);
}
template <int immediate>
__m256 rounded(__m256 x) {
  return _mm256_round_ps(x, immediate);
}
/// A plain loop, and the processor's rounding instruction on whole vectors, which compilers don't
/// make of every loop.
template <class T, class Op, int immediate>
std::vector<Contender> rounding() {
  using V = std::conditional_t<sizeof(T) == 8, __m256d, __m256>;
  constexpr V (*instruction)(V) = rounded<immediate>;
  return {{"loop", orv_call::of(unary_loop<T, Op>)},
          {"instruction", orv_call::of(vectors<T, V, instruction>)}};
}

__m256d root(__m256d x) { return _mm256_sqrt_pd(x); }
__m256 root(__m256 x) { return _mm256_sqrt_ps(x); }

/// Loops over vectors, which compilers for 32-bit code do not make of doubles.
template <class T, class V, T (*hypot)(T, T), auto hypot_u05, auto hypot_u35>
std::vector<Function> roots(char type) {
  return {
      {type, "Sqrt", 0.01, 100, loop(vectors<T, V, [](V x) { return root(x); }>)},
      {type, "InvSqrt", 0.01, 100, loop(vectors<T, V, [](V x) { return 1 / root(x); }>)},
      {type, "Pow3o2", 0.01, 100, loop(vectors<T, V, [](V x) { return x * root(x); }>)},
      {type,
       "Hypot",
       -100,
       100,
       {{"libm", orv_call::of(scalar_of_two<T, hypot>)},
        {"sleef_u05", orv_call::of(vectors_of_two<T, V, hypot_u05>)},
        {"sleef_u35", orv_call::of(vectors_of_two<T, V, hypot_u35>)}}},
  };
}
constexpr auto float_roots =
    roots<float, __m256, hypotf, Sleef_hypotf8_u05avx, Sleef_hypotf8_u35avx>;
constexpr auto double_roots =
    roots<double, __m256d, hypot, Sleef_hypotd4_u05avx, Sleef_hypotd4_u35avx>;

/// By way of the C library's erf and erfc, as other vector libraries have no inverse of them.
template <class T>
std::vector<Function> inverse_errors(char type) {
  const auto by = [](const char* who, auto f) {
    return Contender{who, orv_call::of(unary_loop<T, decltype(f)>)};
  };
  const auto libm = [&](auto f) {
    return by("libm", [](T x) { return static_cast<T>(decltype(f)()(x)); });
  };
  std::vector<Function> rows = {
      {type, "CdfNormInv", 0.001, 0.999, {libm([](double x) { return orv_test::cdfnorminv(x); })}},
      {type, "ErfcInv", 0.001, 1.999, {libm([](double x) { return orv_test::erfcinv(x); })}},
      {type, "ErfInv", -0.999, 0.999, {libm([](double x) { return orv_test::erfinv(x); })}}};
#if ORV_HAVE_BOOST
  using namespace boost::math;
  using Plain = decltype(policies::make_policy(policies::promote_float<false>(),
                                               policies::promote_double<false>()));
  const auto cdf = [](T x) { return static_cast<T>(-M_SQRT2) * erfc_inv(2 * x, Plain()); };
  rows[0].peers.push_back(by("boost", cdf));
  rows[1].peers.push_back(by("boost", [](T x) { return erfc_inv(x, Plain()); }));
  rows[2].peers.push_back(by("boost", [](T x) { return erf_inv(x, Plain()); }));
#endif
  return rows;
}

/// Arithmetic and moves of real numbers T, and of complex ones C of them.
template <class T, class C>
std::vector<Function> arithmetic(char real, char complex) {
  return {
      {real, "Abs", -10, 10, loop(unary_loop<T, Absolute>)},
      {real, "Sqr", -10, 10, loop(unary_loop<T, Square>)},
      {real, "Add", -10, 10, loop(binary_loop<T, std::plus<T>>)},
      {real, "Sub", -10, 10, loop(binary_loop<T, std::minus<T>>)},
      {real, "Mul", -10, 10, loop(binary_loop<T, std::multiplies<T>>)},
      {real, "Div", -10, 10, loop(binary_loop<T, std::divides<T>>)},
      {real, "Inv", -10, 10, loop(unary_loop<T, Reciprocal>)},
      {real, "LinearFrac", -10, 10, loop(linear_frac_loop<T>)},
      {real, "Floor", -1000, 1000, rounding<T, Floor, _MM_FROUND_FLOOR>()},
      {real, "Ceil", -1000, 1000, rounding<T, Ceil, _MM_FROUND_CEIL>()},
      {real, "Trunc", -1000, 1000, rounding<T, Trunc, _MM_FROUND_TRUNC>()},
      {real, "Round", -1000, 1000, loop(unary_loop<T, Round>)},
      {real, "Rint", -1000, 1000, rounding<T, Rint, _MM_FROUND_RINT>()},
      {real, "NearbyInt", -1000, 1000, rounding<T, NearbyInt, _MM_FROUND_NEARBYINT>()},
      {real, "CdfNorm", -10, 10, loop(unary_loop<T, NormalDistribution>)},
      {real, "Pow2o3", -1000, 1000, loop(unary_loop<T, SquaredCubeRoot>)},
      {real, "InvCbrt", -1000, 1000, loop(unary_loop<T, ReciprocalCubeRoot>)},
      {real, "Modf", -1000, 1000, loop(modf_loop<T>)},
      {real, "PackI", -10, 10, loop(pack_loop<T>)},
      {real, "PackV", -10, 10, loop(pack_v_loop<T>)},
      {real, "PackM", -10, 10, loop(pack_m_loop<T>)},
      {real, "UnpackI", -10, 10, loop(unpack_loop<T>)},
      {real, "UnpackV", -10, 10, loop(unpack_v_loop<T>)},
      {real, "UnpackM", -10, 10, loop(unpack_m_loop<T>)},
      {complex, "Conj", -10, 10, loop(unary_loop<C, Conjugate>)},
      {complex, "Add", -10, 10, loop(binary_loop<C, ComplexSum>)},
      {complex, "Sub", -10, 10, loop(binary_loop<C, ComplexDifference>)},
      {complex, "Mul", -10, 10, loop(binary_loop<C, ComplexProduct>)},
      {complex, "MulByConj", -10, 10, loop(binary_loop<C, ProductByConjugate>)},
  };
}

// ---- Rows of functions that other libraries have -----------------------------------------------

// clang-format off
#define SCALAR_d(name) {"libm", orv_call::of(scalar<double, name>)}
#define SCALAR_s(name) {"libm", orv_call::of(scalar<float, name##f>)}
#define SLEEF_d(name, u) {"sleef_" #u, orv_call::of(vectors<double, __m256d, Sleef_##name##d4_##u##avx>)}
#define SLEEF_s(name, u) {"sleef_" #u, orv_call::of(vectors<float, __m256, Sleef_##name##f8_##u##avx>)}
#ifdef __x86_64__
#define LIBMVEC_d(name) , {"libmvec", orv_call::of(vectors<double, __m256d, _ZGVcN4v_##name>)}
#define LIBMVEC_s(name) , {"libmvec", orv_call::of(vectors<float, __m256, _ZGVcN8v_##name##f>)}
#else
#define LIBMVEC_d(name)
#define LIBMVEC_s(name)
#endif
#define SLEEF_SINCOS_d(u) {"sleef_" #u, orv_call::of(sines_and_cosines<double, __m256d, Sleef_sincosd4_##u##avx>)}
#define SLEEF_SINCOS_s(u) {"sleef_" #u, orv_call::of(sines_and_cosines<float, __m256, Sleef_sincosf8_##u##avx>)}
#define SINCOS_LOOP_d {"libm", orv_call::of(sincos_loop<double>)}
#define SINCOS_LOOP_s {"libm", orv_call::of(sincos_loop<float>)}
#define PEERS(t, name) SCALAR_##t(name), SLEEF_##t(name, u10) LIBMVEC_##t(name)

/// Angles beyond the first reductions, ours and others'.
const std::vector<Range> large_angles_s = {{-100, 100}, {1e5, 2e5}, {1e9, 2e9}, {1e30, 2e30}};
const std::vector<Range> large_angles_d = {{-100, 100}, {1e5, 2e5}, {1e9, 2e9}, {1e300, 2e300}};
#ifdef __x86_64__
#define LIBMVEC_OF_TWO(T, V, f, B) , {"libmvec", orv_call::of(vectors_of_two<T, V, f, B>)}
#else
#define LIBMVEC_OF_TWO(T, V, f, B)
#endif
// By the type of the second operand: a vector, or one number for all.
#define POWER_PEERS_d(B)                                                               \
  {"libm", orv_call::of(scalar_of_two<double, pow, B>)},                               \
  {"sleef_u10", orv_call::of(vectors_of_two<double, __m256d, Sleef_powd4_u10avx, B>)} \
  LIBMVEC_OF_TWO(double, __m256d, _ZGVcN4vv_pow, B)
#define POWER_PEERS_s(B)                                                               \
  {"libm", orv_call::of(scalar_of_two<float, powf, B>)},                               \
  {"sleef_u10", orv_call::of(vectors_of_two<float, __m256, Sleef_powf8_u10avx, B>)}   \
  LIBMVEC_OF_TWO(float, __m256, _ZGVcN8vv_powf, B)
#define ATAN2_PEERS_d                                                                         \
  {"libm", orv_call::of(scalar_of_two<double, atan2>)},                                       \
  {"sleef_u10", orv_call::of(vectors_of_two<double, __m256d, Sleef_atan2d4_u10avx>)},         \
  {"sleef_u35", orv_call::of(vectors_of_two<double, __m256d, Sleef_atan2d4_u35avx>)}          \
  LIBMVEC_OF_TWO(double, __m256d, _ZGVcN4vv_atan2, const double*)
#define ATAN2_PEERS_s                                                                         \
  {"libm", orv_call::of(scalar_of_two<float, atan2f>)},                                       \
  {"sleef_u10", orv_call::of(vectors_of_two<float, __m256, Sleef_atan2f8_u10avx>)},           \
  {"sleef_u35", orv_call::of(vectors_of_two<float, __m256, Sleef_atan2f8_u35avx>)}            \
  LIBMVEC_OF_TWO(float, __m256, _ZGVcN8vv_atan2f, const float*)

const Function transcendental[] = {
#define FUNCTIONS(t)                                                                                             \
  {#t[0], "Atan", -10, 10, {PEERS(t, atan), SLEEF_##t(atan, u35)}},                                              \
  {#t[0], "Atan2", -10, 10, {ATAN2_PEERS_##t}},                                                                  \
  {#t[0], "Acos", -1, 1, {PEERS(t, acos), SLEEF_##t(acos, u35)}},                                                \
  {#t[0], "Asin", -1, 1, {PEERS(t, asin), SLEEF_##t(asin, u35)}},                                                \
  {#t[0], "Acosh", 1, 10, {PEERS(t, acosh)}},                                                                    \
  {#t[0], "Asinh", -10, 10, {PEERS(t, asinh)}},                                                                  \
  {#t[0], "Atanh", -0.99, 0.99, {PEERS(t, atanh)}},                                                              \
  {#t[0], "Cbrt", -1000, 1000, {PEERS(t, cbrt), SLEEF_##t(cbrt, u35)}},                                          \
  {#t[0], "Cos", -10, 10, {PEERS(t, cos), SLEEF_##t(cos, u35)}, large_angles_##t},                               \
  {#t[0], "Cosh", -10, 10, {PEERS(t, cosh), SLEEF_##t(cosh, u35)}},                                              \
  {#t[0], "Erf", -5, 5, {PEERS(t, erf)}},                                                                         \
  {#t[0], "Erfc", -3, 9, {SCALAR_##t(erfc), SLEEF_##t(erfc, u15) LIBMVEC_##t(erfc)}},                             \
  {#t[0], "Exp", -30, 30, {PEERS(t, exp)}},                                                                      \
  {#t[0], "Expm1", -5, 5, {PEERS(t, expm1)}},                                                                    \
  {#t[0], "Ln", 0.01, 100, {PEERS(t, log), SLEEF_##t(log, u35)}},                                                \
  {#t[0], "Log10", 0.01, 100, {PEERS(t, log10)}},                                                                \
  {#t[0], "Log1p", -0.9, 10, {PEERS(t, log1p)}},                                                                 \
  {#t[0], "Sin", -10, 10, {PEERS(t, sin), SLEEF_##t(sin, u35)}, large_angles_##t},                               \
  {#t[0], "SinCos", -10, 10, {SINCOS_LOOP_##t, SLEEF_SINCOS_##t(u10), SLEEF_SINCOS_##t(u35)}, large_angles_##t}, \
  {#t[0], "Sinh", -10, 10, {PEERS(t, sinh), SLEEF_##t(sinh, u35)}},                                              \
  {#t[0], "Tan", -10, 10, {PEERS(t, tan), SLEEF_##t(tan, u35)}, large_angles_##t},                               \
  {#t[0], "Tanh", -10, 10, {PEERS(t, tanh), SLEEF_##t(tanh, u35)}},
  FUNCTIONS(s) FUNCTIONS(d)
  {'s', "Pow", 0.01, 10, {POWER_PEERS_s(const float*)}},
  {'s', "Powx", 0.01, 10, {POWER_PEERS_s(float)}},
  {'d', "Pow", 0.01, 10, {POWER_PEERS_d(const double*)}},
  {'d', "Powx", 0.01, 10, {POWER_PEERS_d(double)}},
  {'c', "CIS", -100, 100,
   {{"libm", orv_call::of(cis_loop<float, QemComplexFloat>)},
    {"sleef_u10", orv_call::of(complex_sines_and_cosines<float, __m256, Sleef_sincosf8_u10avx>)}}},
  {'z', "CIS", -100, 100,
   {{"libm", orv_call::of(cis_loop<double, QemComplexDouble>)},
    {"sleef_u10", orv_call::of(complex_sines_and_cosines<double, __m256d, Sleef_sincosd4_u10avx>)}}},
};
// clang-format on

const std::vector<Function>& all_functions() {
  static const auto list = [] {
    std::vector<Function> all(std::begin(transcendental), std::end(transcendental));
    for (auto& row : arithmetic<float, QemComplexFloat>('s', 'c')) all.push_back(row);
    for (auto& row : inverse_errors<float>('s')) all.push_back(row);
    for (auto& row : inverse_errors<double>('d')) all.push_back(row);
    for (auto& row : complex_functions()) all.push_back(row);
    for (auto& row : float_roots('s')) all.push_back(row);
    for (auto& row : double_roots('d')) all.push_back(row);
    for (auto& row : arithmetic<double, QemComplexDouble>('d', 'z')) all.push_back(row);
    return all;
  }();
  return list;
}

}  // namespace

const Function* find_function(char type, const std::string& name) {
  for (const Function& row : all_functions()) {
    if (row.type == type && row.name == name) return &row;
  }
  return nullptr;
}

}  // namespace orv_bench
