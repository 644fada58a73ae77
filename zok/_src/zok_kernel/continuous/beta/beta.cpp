// SPDX-License-Identifier: MIT
// Beta numbers by rejection, with a method for each region of the shapes p and q:
//
//   both above 1             from a logistic number (Cheng 1978, BA)
//   one below, one above 1   two branches (Atkinson and Whittaker 1976)
//   both below 1             two branches again, or the share of a power in a sum (Johnk 1964)
//   one of them 1            inversion
//
// Candidates are as in gamma.cpp: none is lost, so a split of a request changes nothing. Powers of
// uniforms are formed so that neither tiny nor huge shapes hurt: nothing overflows, and where
// numbers crowd near an end what counts is their distance from it.
#include <orv/scalar.h>

#include "../../../zok_sub_kernel/_service/quiet_kernels.hpp"
#include "../../../zok_sub_kernel/_service/vector_kernels.hpp"
#include "../_service/ln_callback.hpp"
#include "../_service/pairs.hpp"
#include "../_service/rejection.hpp"

using namespace orv;

namespace {

constexpr int32_t block = 512;

/// What becomes of V, b times a logistic number, with W = p exp(V) and the mean m = p / (p + q):
///
///   l = ln((q + W) / (p + q)), x = W / (q + W)
///
/// By E = exp(V) - 1 these are ln(1 + m E) and m + m (1 - m) E / (1 + m E), which large shapes
/// need: V is near 0 then, and all numbers are near m.
template <class T>
class Cheng {
 public:
  Cheng(double p, double q)
      : m_(static_cast<T>(p / (p + q))),
        low_m_(static_cast<T>(p / (p + q) - static_cast<double>(m_))),
        rest_(static_cast<T>(q / (p + q))),
        slope_(static_cast<T>(p / (p + q) * (q / (p + q)))),
        is_large_(p + q > large) {}

  void operator()(int32_t n, const T* v, T* x, T* l) const {
    if (is_large_) {
      from_difference(n, v, x, l);
    } else {
      from_ratio(n, v, x, l);
    }
  }

 private:
  static constexpr double large = 1000;  // where the error of a short exponential begins to show

  void from_ratio(int32_t n, const T* v, T* x, T* l) const {
    kernels::exp(n, v, x);
    for (int32_t k = 0; k < n; ++k) {
      const T w = m_ * x[k];
      l[k] = rest_ + w;
      x[k] = w / l[k];
    }
    kernels::ln(n, l, l);
  }

  void from_difference(int32_t n, const T* v, T* x, T* l) const {
    kernels::expm1(n, v, x, Slot::ha);
    for (int32_t k = 0; k < n; ++k) {
      l[k] = m_ * x[k];
      x[k] = m_ + (low_m_ + slope_ * x[k] / (T(1) + l[k]));
    }
    kernels::ln1p(n, l, l, Slot::ha);
  }

  T m_, low_m_, rest_, slope_;
  bool is_large_;
};

template <class T>
int32_t _ChengBA(StreamState* stream, int32_t n, T* r, double p, double q) {
  const double over = (p - 1) + (q - 1);
  const double width = 1 / __zokdSqrt(q * ((p - 1) / over) + p * ((q - 1) / over));
  constexpr double ln_4 = 1.3862943611198906;
  const T b = static_cast<T>(width), alpha = static_cast<T>(p + q);
  const T gamma = static_cast<T>(p + 1 / width), lost = static_cast<T>(ln_4);
  const Cheng<T> cheng(p, q);
  return by_rejection(stream, n, r, [=](int32_t count, T* pairs, T* out) {
    alignas(32) T u1[block], v[block], z[block], x[block], l[block];
    split_pairs(count, pairs, u1, z);
    for (int32_t k = 0; k < count; ++k) {
      const T rest = T(1) - u1[k];
      v[k] = u1[k] / (rest > 0 ? rest : T(1));  // a u1 of 1 is rejected
      z[k] = u1[k] * u1[k] * z[k];
    }
    kernels::ln(count, v, v);
    kernels::ln(count, z, z);
    for (int32_t k = 0; k < count; ++k) v[k] = b * v[k];
    cheng(count, v, x, l);
    for (int32_t k = 0; k < count; ++k) {
      const T acceptance = gamma * v[k] - alpha * l[k] - lost - z[k];
      v[k] = u1[k] < T(1) ? acceptance : T(-1);
    }
    return append_accepted(
        count, out, [&](int32_t k) { return x[k]; }, [&](int32_t k) { return v[k] >= T(0); });
  });
}

/// A density x^(p-1) (1-x)^(q-1) with p below 1 under one that goes like x^(p-1) up to t and like
/// (1-x)^(q-1) above, the other factor being at its largest. The share of the first is in the ratio
/// `below` to `above`. With q below 1 the other factor is largest at t, with (1-t)^(q-1), else at
/// 0.
template <class T>
int32_t under_two_branches(StreamState* stream, int32_t n, T* r, double p, double q, double t,
                           double below, double above, double ln_largest) {
  const T border = static_cast<T>(below / (below + above));
  const T rest = T(1) - border;
  const T seam = static_cast<T>(t), beyond = static_cast<T>(1 - t),
          ln_t = static_cast<T>(ln_largest);
  const T p_power = static_cast<T>(1 / p), q_power = static_cast<T>(1 / q);
  const T p_test = static_cast<T>(1 - p), q_test = static_cast<T>(1 - q);
  return by_rejection(stream, n, r, [=](int32_t count, T* pairs, T* out) {
    TwoBranches<T> candidates;
    candidates.divide(count, pairs, [=](T u1) { return u1 > border; });
    T* const l = pairs;

    auto& [m, x, test] = candidates.branch[0];
    for (int32_t k = 0; k < m; ++k) x[k] = x[k] / border;
    kernels::ln(m, x, x);
    for (int32_t k = 0; k < m; ++k) x[k] = p_power * x[k];
    kernels::exp(m, x, x);
    for (int32_t k = 0; k < m; ++k) {
      const T below_seam = seam * x[k];
      x[k] = below_seam < seam ? below_seam : seam;
      l[k] = -x[k];
    }
    kernels::ln1p(m, l, l);
    kernels::ln(m, test, test);
    for (int32_t k = 0; k < m; ++k) test[k] = q_test * (l[k] - ln_t) + test[k];

    auto& [m2, x2, test2] = candidates.branch[1];
    for (int32_t k = 0; k < m2; ++k) x2[k] = (T(1) - x2[k]) / rest;
    kernels::ln(m2, x2, x2);
    for (int32_t k = 0; k < m2; ++k) x2[k] = q_power * x2[k];
    if (q_test > 0) {  // numbers crowd at 1
      kernels::exp(m2, x2, x2);
      for (int32_t k = 0; k < m2; ++k) x2[k] = T(1) - beyond * x2[k];
    } else {  // they crowd at 0, and t is near it
      kernels::expm1(m2, x2, x2);
      for (int32_t k = 0; k < m2; ++k) x2[k] = seam - beyond * x2[k];
    }
    for (int32_t k = 0; k < m2; ++k) l[k] = x2[k] / seam;
    kernels::ln(m2, l, l);
    kernels::ln(m2, test2, test2);
    for (int32_t k = 0; k < m2; ++k) test2[k] = p_test * l[k] + test2[k];

    return candidates.merge(count, out);
  });
}

template <class T>
int32_t _Atkinson1(StreamState* stream, int32_t n, T* r, double p, double q) {
  const double s1 = __zokdSqrt(p * (1 - p)), s2 = __zokdSqrt(q * (1 - q));
  const double t = s1 / (s1 + s2), rest = s2 / (s1 + s2);
  return under_two_branches(stream, n, r, p, q, t, q * t, p * rest, kernels::ln(rest));
}

template <class T>
int32_t _Atkinson2(StreamState* stream, int32_t n, T* r, double p, double q) {
  const double t = (1 - p) / (1 - p + q);
  const double power = kernels::exp(q * kernels::ln1p(-t));  // (1-t)^q
  return under_two_branches(stream, n, r, p, q, t, q * t, p * power, 0);
}

/// x / (x + y) from the smaller of the two, so that it is as exact next to 1 as next to 0.
template <class T>
T share_of(T x, T y, T smaller, T sum) {
  const T share = smaller / sum;
  return x < y ? share : T(1) - share;
}

/// The same of exp(x) and exp(y) where these can't be told.
template <class T>
T share_of_powers(T x, T y) {
  T ratio = x < y ? x - y : y - x;
  kernels::exp(1, &ratio, &ratio, Slot::ha);
  return share_of(x, y, ratio, T(1) + ratio);
}

/// X / (X + Y) of X = u1^(1 / p), Y = u2^(1 / q), if the sum is not above 1.
template <class T>
int32_t johnk(StreamState* stream, int32_t n, T* r, double p, double q) {
  const T p_power = static_cast<T>(1 / p), q_power = static_cast<T>(1 / q);
  constexpr T tiny = sizeof(T) == 8 ? static_cast<T>(0x1p-900) : static_cast<T>(0x1p-100);
  return by_rejection(stream, n, r, [=](int32_t count, T* pairs, T* out) {
    alignas(32) T x[block], y[block], powers[2 * block];
    kernels::ln(2 * count, pairs, pairs);
    split_pairs(count, pairs, x, y);
    for (int32_t k = 0; k < count; ++k) {
      x[k] = p_power * x[k];
      y[k] = q_power * y[k];
    }
    T *const exp_x = powers, *const exp_y = powers + block;
    kernels::exp(count, x, exp_x);
    kernels::exp(count, y, exp_y);
    int32_t made = 0;
    for (int32_t k = 0; k < count; ++k) {
      const T sum = exp_x[k] + exp_y[k];
      const T smaller = exp_x[k] < exp_y[k] ? exp_x[k] : exp_y[k];
      out[made] =
          smaller > tiny ? share_of(exp_x[k], exp_y[k], smaller, sum) : share_of_powers(x[k], y[k]);
      made += T(1) >= sum;
    }
    return made;
  });
}

/// u^(1 / shape) - 1, or without the 1.
template <class T>
int32_t inversion(StreamState* stream, int32_t n, T* r, double shape, bool less_one) {
  const int32_t status = draw_uniforms(stream, n, r);
  if (status < 0) return status;
  const T power = static_cast<T>(1 / shape);
  in_parts(n, r, [=](int32_t count, T* x) {
    kernels::ln(count, x, x);
    for (int32_t i = 0; i < count; ++i) x[i] = power * x[i];
    if (less_one) {
      kernels::expm1(count, x, x);
    } else {
      kernels::exp(count, x, x);
    }
  });
  return RNG_OK;
}

/// Made numbers y stand for origin + direction y.
struct Made {
  int32_t status;
  int origin = 0, direction = 1;
};

template <class T>
Made standard(StreamState* stream, int32_t n, T* r, double p, double q) {
  constexpr double square = 0.8522552176537243, level = 0.9562409713408151;
  if (p < 1 && q < 1) {
    if (q + square * (p * p) - level > 0) return {_Atkinson1(stream, n, r, p, q)};
    return {johnk(stream, n, r, p, q)};
  }
  if (p < 1 && q > 1) return {_Atkinson2(stream, n, r, p, q)};
  if (p > 1 && q < 1) return {_Atkinson2(stream, n, r, q, p), 1, -1};
  if (p > 1 && q > 1) return {_ChengBA(stream, n, r, p, q)};
  if (p == 1) return {inversion(stream, n, r, q, true), 0, -1};
  if (p > 1) return {inversion(stream, n, r, p, true), 1, 1};
  return {inversion(stream, n, r, p, false)};
}

template <class T>
int32_t beta_numbers(StreamState* stream, int32_t n, T* r, T p, T q, T a, T beta) {
  if (n < 1) return RNG_OK;
  const QuietKernels quiet(_vLnOnlyCallBack<T>);
  const Made made = standard(stream, n, r, static_cast<double>(p), static_cast<double>(q));
  if (made.status < 0) return made.status;
  const T origin = static_cast<T>(made.origin), direction = static_cast<T>(made.direction);
  const T top = a + beta;
  for (int32_t i = 0; i < n; ++i) {
    const T x = at_least(a, a + beta * (origin + direction * r[i]));
    r[i] = top < x ? top : x;
  }
  return RNG_OK;
}

}  // namespace

int32_t _zokdRngBeta(int32_t, StreamState* stream, int32_t n, double* r, double p, double q,
                     double a, double beta) {
  return beta_numbers(stream, n, r, p, q, a, beta);
}

int32_t _zoksRngBeta(int32_t, StreamState* stream, int32_t n, float* r, float p, float q, float a,
                     float beta) {
  return beta_numbers(stream, n, r, p, q, a, beta);
}
