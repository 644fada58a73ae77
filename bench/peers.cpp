// The scalar C library, its vector math (x86-64 only) and SLEEF. All vector functions are those for
// AVX without FMA, the instruction set of our own fastest kernels.
#include "peers.hpp"

#include <math.h>
#include <sleef.h>
#include <string.h>

#include <cmath>
#include <functional>

#ifdef __x86_64__
#define DECLARE_LIBMVEC(name)                  \
  extern "C" __m256d _ZGVcN4v_##name(__m256d); \
  extern "C" __m256 _ZGVcN8v_##name##f(__m256);
DECLARE_LIBMVEC(exp)
DECLARE_LIBMVEC(expm1)
DECLARE_LIBMVEC(log)
DECLARE_LIBMVEC(log10)
DECLARE_LIBMVEC(log1p)
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

template <class T, class V, auto f>
void vectors(int32_t n, const T* a, T* r) {
  constexpr int32_t lanes = sizeof(V) / sizeof(T);
  V x;
  int32_t i = 0;
  for (; i <= n - lanes; i += lanes) {
    memcpy(&x, a + i, sizeof x);
    x = f(x);
    memcpy(r + i, &x, sizeof x);
  }
  if (i == n) return;
  T rest[lanes];
  for (int32_t k = 0; k < lanes; ++k) rest[k] = a[i + k < n ? i + k : i];
  memcpy(&x, rest, sizeof x);
  x = f(x);
  memcpy(rest, &x, sizeof x);
  for (int32_t k = 0; i + k < n; ++k) r[i + k] = rest[k];
}

/// Functions of two operands. The second is a vector, or one number for all.
template <class V, class T>
V operand(const T* p, int32_t i) {
  V x;
  memcpy(&x, p + i, sizeof x);
  return x;
}
template <class V, class T>
V operand(T number, int32_t) {
  return V{} + number;
}

template <class T, class B, T (*f)(T, T)>
void scalar_pairs(int32_t n, const T* a, B b, T* r) {
  for (int32_t i = 0; i < n; ++i) r[i] = f(a[i], operand<T>(b, i));
}

template <class T, class B, class V, auto f>
void vector_pairs(int32_t n, const T* a, B b, T* r) {
  constexpr int32_t lanes = sizeof(V) / sizeof(T);
  int32_t i = 0;
  for (; i <= n - lanes; i += lanes) {
    const V y = f(operand<V>(a, i), operand<V>(b, i));
    memcpy(r + i, &y, sizeof y);
  }
  if (i == n) return;
  V x = V{} + 1, y = x;
  for (int32_t k = 0; i + k < n; ++k) x[k] = a[i + k], y[k] = operand<T>(b, i + k);
  x = f(x, y);
  memcpy(r + i, &x, (n - i) * sizeof(T));
}

/// Sine and cosine by one call of a library.
template <class T, class V, auto f>
void sines_and_cosines(int32_t n, const T* a, T* r) {
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

struct Absolute {
  template <class T>
  T operator()(T x) const {
    return std::fabs(x);
  }
};
struct Square {
  template <class T>
  T operator()(T x) const {
    return x * x;
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

template <class F>
std::vector<Contender> loop(F* f) {
  return {{"loop", orv_call::of(f)}};
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
      {real, "Modf", -1000, 1000, loop(modf_loop<T>)},
      {real, "PackI", -10, 10, loop(pack_loop<T>)},
      {real, "UnpackI", -10, 10, loop(unpack_loop<T>)},
      {complex, "Conj", -10, 10, loop(unary_loop<C, Conjugate>)},
      {complex, "Add", -10, 10, loop(binary_loop<C, ComplexSum>)},
      {complex, "Mul", -10, 10, loop(binary_loop<C, ComplexProduct>)},
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
#define PEERS(t, name) SCALAR_##t(name), SLEEF_##t(name, u10) LIBMVEC_##t(name)

#ifdef __x86_64__
#define LIBMVEC_POWER(T, B, V, f) , {"libmvec", orv_call::of(vector_pairs<T, B, V, f>)}
#else
#define LIBMVEC_POWER(T, B, V, f)
#endif
// By the type of the second operand: a vector, or one number for all.
#define POWER_PEERS_d(B)                                                      \
  {"libm", orv_call::of(scalar_pairs<double, B, pow>)},                       \
  {"sleef_u10", orv_call::of(vector_pairs<double, B, __m256d, Sleef_powd4_u10avx>)} \
  LIBMVEC_POWER(double, B, __m256d, _ZGVcN4vv_pow)
#define POWER_PEERS_s(B)                                                      \
  {"libm", orv_call::of(scalar_pairs<float, B, powf>)},                       \
  {"sleef_u10", orv_call::of(vector_pairs<float, B, __m256, Sleef_powf8_u10avx>)} \
  LIBMVEC_POWER(float, B, __m256, _ZGVcN8vv_powf)

const Function transcendental[] = {
#define FUNCTIONS(t)                                              \
  {#t[0], "Exp", -30, 30, {PEERS(t, exp)}},                       \
  {#t[0], "Expm1", -5, 5, {PEERS(t, expm1)}},                     \
  {#t[0], "Ln", 0.01, 100, {PEERS(t, log), SLEEF_##t(log, u35)}}, \
  {#t[0], "Log10", 0.01, 100, {PEERS(t, log10)}},                 \
  {#t[0], "Log1p", -0.9, 10, {PEERS(t, log1p)}},
  FUNCTIONS(s) FUNCTIONS(d)
  {'s', "Pow", 0.01, 10, {POWER_PEERS_s(const float*)}},
  {'s', "Powx", 0.01, 10, {POWER_PEERS_s(float)}},
  {'d', "Pow", 0.01, 10, {POWER_PEERS_d(const double*)}},
  {'d', "Powx", 0.01, 10, {POWER_PEERS_d(double)}},
  {'c', "CIS", -100, 100,
   {{"libm", orv_call::of(cis_loop<float, QemComplexFloat>)},
    {"sleef_u10", orv_call::of(sines_and_cosines<float, __m256, Sleef_sincosf8_u10avx>)}}},
  {'z', "CIS", -100, 100,
   {{"libm", orv_call::of(cis_loop<double, QemComplexDouble>)},
    {"sleef_u10", orv_call::of(sines_and_cosines<double, __m256d, Sleef_sincosd4_u10avx>)}}},
};
// clang-format on

const std::vector<Function>& all_functions() {
  static const auto list = [] {
    std::vector<Function> all(std::begin(transcendental), std::end(transcendental));
    for (auto& row : arithmetic<float, QemComplexFloat>('s', 'c')) all.push_back(row);
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
