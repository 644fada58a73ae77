// The scalar C library, its vector math (x86-64 only) and SLEEF. All vector functions are those for
// AVX without FMA, the instruction set of our own fastest kernels.
#include "peers.hpp"

#include <math.h>
#include <sleef.h>
#include <string.h>

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

// ---- Loops as an application would write them --------------------------------------------------

template <class T, class Op>
void unary_loop(int32_t n, const T* a, T* r) {
  for (int32_t i = 0; i < n; ++i) r[i] = Op()(a[i]);
}
template <class T, class Op>
void binary_loop(int32_t n, const T* a, const T* b, T* r) {
  for (int32_t i = 0; i < n; ++i) r[i] = Op()(a[i], b[i]);
}

struct Absolute {
  float operator()(float x) const { return fabsf(x); }
  double operator()(double x) const { return fabs(x); }
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

template <class T>
std::vector<Function<T>> arithmetic() {
  return {
      {"Abs", -10, 10, {{"loop", unary_loop<T, Absolute>}}},
      {"Sqr", -10, 10, {{"loop", unary_loop<T, Square>}}},
      {"Add", -10, 10, {{"loop", nullptr, binary_loop<T, std::plus<T>>}}},
      {"Sub", -10, 10, {{"loop", nullptr, binary_loop<T, std::minus<T>>}}},
      {"Mul", -10, 10, {{"loop", nullptr, binary_loop<T, std::multiplies<T>>}}},
  };
}

// ---- Rows of functions that other libraries have -----------------------------------------------

// clang-format off
#define SCALAR_d(name) {"libm", scalar<double, name>}
#define SCALAR_s(name) {"libm", scalar<float, name##f>}
#define SLEEF_d(name, u) {"sleef_" #u, vectors<double, __m256d, Sleef_##name##d4_##u##avx>}
#define SLEEF_s(name, u) {"sleef_" #u, vectors<float, __m256, Sleef_##name##f8_##u##avx>}
#ifdef __x86_64__
#define LIBMVEC_d(name) , {"libmvec", vectors<double, __m256d, _ZGVcN4v_##name>}
#define LIBMVEC_s(name) , {"libmvec", vectors<float, __m256, _ZGVcN8v_##name##f>}
#else
#define LIBMVEC_d(name)
#define LIBMVEC_s(name)
#endif
#define PEERS(t, name) SCALAR_##t(name), SLEEF_##t(name, u10) LIBMVEC_##t(name)

#define TRANSCENDENTAL(t)                                   \
  {"Exp", -30, 30, {PEERS(t, exp)}},                        \
  {"Expm1", -5, 5, {PEERS(t, expm1)}},                      \
  {"Ln", 0.01, 100, {PEERS(t, log), SLEEF_##t(log, u35)}},  \
  {"Log10", 0.01, 100, {PEERS(t, log10)}},                  \
  {"Log1p", -0.9, 10, {PEERS(t, log1p)}}
// clang-format on

template <class T>
std::vector<Function<T>> rows();

template <>
std::vector<Function<float>> rows() {
  std::vector<Function<float>> all = {TRANSCENDENTAL(s)};
  for (auto& row : arithmetic<float>()) all.push_back(row);
  return all;
}
template <>
std::vector<Function<double>> rows() {
  std::vector<Function<double>> all = {TRANSCENDENTAL(d)};
  for (auto& row : arithmetic<double>()) all.push_back(row);
  return all;
}
template <>
std::vector<Function<QemComplexFloat>> rows() {
  return {{"Conj", -10, 10, {{"loop", unary_loop<QemComplexFloat, Conjugate>}}}};
}
template <>
std::vector<Function<QemComplexDouble>> rows() {
  return {{"Conj", -10, 10, {{"loop", unary_loop<QemComplexDouble, Conjugate>}}}};
}

}  // namespace

template <class T>
const Function<T>* find_function(const std::string& name) {
  static const std::vector<Function<T>> all = rows<T>();
  for (const Function<T>& row : all) {
    if (row.name == name) return &row;
  }
  return nullptr;
}

template const Function<float>* find_function(const std::string&);
template const Function<double>* find_function(const std::string&);
template const Function<QemComplexFloat>* find_function(const std::string&);
template const Function<QemComplexDouble>* find_function(const std::string&);

}  // namespace orv_bench
