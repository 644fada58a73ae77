// SPDX-License-Identifier: MIT
// Gamma numbers by rejection, with a method for each range of the shape alpha:
//
//   above 1            the cube of a Gaussian number (Marsaglia and Tsang 2000)
//   1                  exponential
//   from 0.6 to 1      from a Weibull number (Vaduva 1977)
//   below 0.6          exponential power transformation (Devroye 1986)
//
// No candidate is ever lost: those of a block are never more than the numbers still wanted, but for
// one Gaussian number that waits in a chunk. So the sequence does not depend on how it is asked
// for.
#include <orv/scalar.h>

#include "../../../zok_sub_kernel/_service/chunk.hpp"
#include "../../../zok_sub_kernel/_service/quiet_kernels.hpp"
#include "../_service/box_muller.hpp"
#include "../_service/entries.hpp"
#include "../_service/ln_callback.hpp"
#include "../_service/pairs.hpp"
#include "../_service/rejection.hpp"

using namespace orv;

namespace {

constexpr int32_t block = 512;
constexpr double least_weibull_shape = 0.6;

// ---- Marsaglia and Tsang ------------------------------------------------------------------------

template <class T>
inline constexpr uint32_t spare_chunk = 7;
template <>
inline constexpr uint32_t spare_chunk<float> = 8;

/// A candidate: a Gaussian number and the uniform that decides on it. Of these there are always an
/// even number, so one may be left.
template <class T>
struct Spare {
  T uniform = -1;  // below 0: there is none
  T gaussian = -1;
};

/// m candidates, m even, from 2 m uniforms: of each four, the first and the third make two Gaussian
/// numbers, the second and the fourth decide.
template <class T>
int32_t draw_candidates(StreamState* stream, int32_t m, T* gaussian, T* uniform) {
  alignas(32) T drawn[2 * block], u[block], v[block / 2], rho[block / 2], cosine[block / 2];
  const int32_t status = draw_uniforms(stream, 2 * m, drawn);
  if (status < 0) return status;
  const int32_t pairs = m / 2;
  split_pairs(m, drawn, u, uniform);
  split_pairs(pairs, u, u, v);
  angles(pairs, v);
  radii(pairs, u, rho);
  T* const sine = u;
  kernels::sin_cos(pairs, v, sine, cosine);
  for (int32_t k = 0; k < pairs; ++k) {
    sine[k] = rho[k] * sine[k];
    cosine[k] = rho[k] * cosine[k];
  }
  join_pairs(pairs, sine, cosine, gaussian);
  return RNG_OK;
}

/// ln(1 + t) - t + t^2 / 2 - t^3 / 3
double ln_remainder(double t) {
  if (t > 0x1p-6 || t < -0x1p-6) return __zokdLn(1 + t) - t * (1 - t * (0.5 - t / 3));
  constexpr double terms[] = {1.0 / 5, 1.0 / 6, 1.0 / 7, 1.0 / 8, 1.0 / 9, 1.0 / 10, 1.0 / 11};
  double sum = 0;
  for (int k = 6; k >= 0; --k) sum = t * (terms[k] - sum);
  return -(t * t) * (t * t) * (0.25 - sum);
}

/// The density's ratio of X = d (1 + c x)^3 to the Gaussian's is exp(x^2 / 2 + d - d v + d ln v)
/// with v = (1 + c x)^3. As 9 d c^2 = 1, what is large in it goes.
bool accepts(double x, double u, double c, double d) {
  return 3 * d * ln_remainder(c * x) > __zokdLn(u);
}

/// d (1 + c x)^3, as exact as T is next to d and next to 0.
template <class T>
class Cube {
 public:
  Cube(double c, double d)
      : c_(static_cast<T>(c)),
        d_(static_cast<T>(d)),
        low_d_(static_cast<T>(d - static_cast<double>(d_))) {}

  T operator()(T x) const {
    const T t = c_ * x, w = T(1) + t;
    const T from_d = d_ + (low_d_ + d_ * (t * (T(3) + t * (T(3) + t))));
    return w < T(0.5) ? d_ * (w * w * w) : from_d;
  }

 private:
  T c_, d_, low_d_;
};

template <class T>
int32_t _Marsaglia(StreamState* stream, int32_t n, T* r, double alpha) {
  const double d = alpha - 1.0 / 3, c = 1 / __zokdSqrt(9 * alpha - 3);
  const Cube<T> cube(c, d);
  constexpr T squeeze = static_cast<T>(0.0331);

  Spare<T>* chunk;
  int32_t status = find_or_add_record(stream, spare_chunk<T>, &chunk);
  if (status < 0) return status;
  Spare<T> spare = *chunk;  // which stays as it is if a draw fails
  alignas(32) T x[block + 8], u[block + 8], made_of[block], sure[block];
  Barren barren;
  while (n > 0) {
    const int32_t carried = spare.uniform >= 0;
    x[0] = spare.gaussian;
    u[0] = spare.uniform;
    int32_t m = n - carried < block ? n - carried : block;
    m += m & 1;
    if (m > 0) status = draw_candidates(stream, m, x + carried, u + carried);
    if (status < 0) return status;
    const int32_t needed = n < block ? n : block, last = carried + m - 1;
    spare = last >= needed ? Spare<T>{u[last], x[last]} : Spare<T>{};

    for (int32_t k = 0; k < needed; ++k) {
      const T x2 = x[k] * x[k];
      made_of[k] = cube(x[k]);
      sure[k] = T(1) - squeeze * (x2 * x2);
    }
    const int32_t made = append_accepted(
        needed, r, [&](int32_t k) { return made_of[k]; },
        [&](int32_t k) { return made_of[k] > 0 && (u[k] < sure[k] || accepts(x[k], u[k], c, d)); });
    if (barren.after(made)) return RNG_BAD_ARGS;
    r += made;
    n -= made;
  }
  *chunk = spare;
  return RNG_OK;
}

// ---- Shapes below 1 -----------------------------------------------------------------------------

/// x[k] = x[k]^power
template <class T>
void raise(int32_t n, T* x, T power) {
  kernels::ln(n, x, x);
  for (int32_t k = 0; k < n; ++k) x[k] = power * x[k];
  kernels::exp(n, x, x);
}

/// z = -ln u1 to the power 1 / alpha, if it is not above z - ln u2 - d.
template <class T>
int32_t weibull_rejection(StreamState* stream, int32_t n, T* r, double alpha) {
  const double rest = 1 - alpha;
  const T d = static_cast<T>(rest * kernels::exp(alpha / rest * kernels::ln(alpha)));
  const T power = static_cast<T>(1 / alpha);
  return by_rejection(stream, n, r, [=](int32_t count, T* pairs, T* out) {
    alignas(32) T w[block], t[block];
    kernels::ln(2 * count, pairs, pairs);
    split_pairs(count, pairs, w, t);
    for (int32_t k = 0; k < count; ++k) {
      t[k] = T(0) - (d + w[k] + t[k]);
      w[k] = T(0) - w[k];
    }
    raise(count, w, power);
    return append_accepted(
        count, out, [&](int32_t k) { return w[k]; }, [&](int32_t k) { return t[k] >= w[k]; });
  });
}

/// u1^(1 / alpha) where u1 is below 1 - alpha, else the same power of 1 - alpha - alpha w, with
/// w = ln((1 - u1) / alpha); the power x is accepted if x is not above -ln u2, or -ln u2 - w.
template <class T>
int32_t _EPDTransform(StreamState* stream, int32_t n, T* r, double shape) {
  const T alpha = static_cast<T>(shape), power = static_cast<T>(1 / shape);
  const T border = static_cast<T>(1 - shape);
  return by_rejection(stream, n, r, [=](int32_t count, T* pairs, T* out) {
    TwoBranches<T> candidates;
    candidates.divide(count, pairs, [=](T u1) { return u1 >= border; });

    auto& [m, x, test] = candidates.branch[0];
    kernels::ln(m, test, test);
    raise(m, x, power);
    for (int32_t k = 0; k < m; ++k) test[k] = test[k] + x[k];

    auto& [m2, x2, test2] = candidates.branch[1];
    T* const w = pairs;
    for (int32_t k = 0; k < m2; ++k) w[k] = power * (T(1) - x2[k]);
    kernels::ln(m2, test2, test2);
    kernels::ln(m2, w, w);
    for (int32_t k = 0; k < m2; ++k) x2[k] = border - alpha * w[k];
    raise(m2, x2, power);
    for (int32_t k = 0; k < m2; ++k) test2[k] = test2[k] + x2[k] + w[k];

    return candidates.merge(count, out);
  });
}

template <class T>
int32_t standard(StreamState* stream, int32_t n, T* r, T alpha) {
  if (alpha > 1) return _Marsaglia(stream, n, r, static_cast<double>(alpha));
  if (alpha == 1) return draw_exponentials(stream, n, r);
  if (alpha >= static_cast<T>(least_weibull_shape)) {
    return weibull_rejection(stream, n, r, static_cast<double>(alpha));
  }
  return _EPDTransform(stream, n, r, static_cast<double>(alpha));
}

template <class T>
int32_t gamma(StreamState* stream, int32_t n, T* r, T alpha, T a, T beta) {
  if (n < 1) return RNG_OK;
  const QuietKernels quiet(_vLnOnlyCallBack<T>);
  const int32_t status = standard(stream, n, r, alpha);
  if (status < 0) return status;
  for (int32_t i = 0; i < n; ++i) r[i] = at_least(a, a + beta * r[i]);
  return RNG_OK;
}

}  // namespace

int32_t _zokdRngGamma(int32_t, StreamState* stream, int32_t n, double* r, double alpha, double a,
                      double beta) {
  return gamma(stream, n, r, alpha, a, beta);
}

int32_t _zoksRngGamma(int32_t, StreamState* stream, int32_t n, float* r, float alpha, float a,
                      float beta) {
  return gamma(stream, n, r, alpha, a, beta);
}
