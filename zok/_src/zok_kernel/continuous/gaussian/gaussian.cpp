// SPDX-License-Identifier: MIT
// Gaussian numbers, by pairs of uniforms (Box and Muller 1958) or by inversion.
//
//   u1, u2 -> rho sin(2 pi u2), rho cos(2 pi u2), with rho = sqrt(-2 ln u1)
//
// Sine and cosine of one angle are the same whether they come from one kernel or from two, so a
// pair may be finished in a later call: its uniforms wait in a chunk of the stream.
#include "../../../zok_sub_kernel/_service/chunk.hpp"
#include "../../../zok_sub_kernel/_service/quiet_kernels.hpp"
#include "../_service/box_muller.hpp"
#include "../_service/ln_callback.hpp"
#include "../_service/pairs.hpp"
#include "../_service/uniforms.hpp"

using namespace orv;

namespace {

/// What the precisions differ in.
template <class T>
struct Gaussian;

template <>
struct Gaussian<double> {
  static constexpr uint32_t chunk = 2;
  /// For the inverse error function at its ends; they differ on purpose.
  static constexpr double low_end = -0.7670519064056041, high_end = 5.8635847487551676;
};

template <>
struct Gaussian<float> {
  static constexpr uint32_t chunk = 1;
  static constexpr double low_end = -1.0837466f, high_end = 3.832507f;
};

constexpr double root_of_two = 1.4142135623730951;
constexpr int32_t block = 1024;

/// The two singular functions, told apart by the argument: a logarithm of 0, and the inverse error
/// function.
template <class T>
int32_t _vCallBack(QemErrorContext* context) {
  const double x = context->arg1;
  if (context->code == QEM_STATUS_SINGULARITY && x == 0) {
    replace_results(context, ln_of_zero<T>);
  } else if (context->code == QEM_STATUS_SINGULARITY || context->code == QEM_STATUS_DOMAIN) {
    replace_results(context, x < 0 ? Gaussian<T>::low_end : Gaussian<T>::high_end);
  }
  return 0;
}

/// The sine half of every pair.
template <class T>
int32_t _vRngGaussianBoxMuller(StreamState* stream, int32_t n, T* r, T a, T sigma) {
  alignas(32) T uniforms[2 * block], u1[block], u2[block];
  while (n > 0) {
    const int32_t count = n < block ? n : block;
    const int32_t status = draw_uniforms(stream, 2 * count, uniforms);
    if (status < 0) return status;
    split_pairs(count, uniforms, u1, u2);
    angles(count, u2);
    kernels::sin(count, u2, u2);
    radii(count, u1, r);
    for (int32_t k = 0; k < count; ++k) r[k] = a + (sigma * r[k]) * u2[k];
    r += count;
    n -= count;
  }
  return RNG_OK;
}

/// A pair of uniforms whose first deviate has been delivered.
template <class T>
struct Pending {
  static constexpr T none = -1;

  T U1 = none, U2 = none;
};

template <class T>
using Trigonometric = void (*)(int32_t n, const T* x, T* r, Slot slot);

/// One deviate of a pair.
template <class T>
T half_of_pair(const Pending<T>& pair, Trigonometric<T> function) {
  T angle = pair.U2, rho;
  angles(1, &angle);
  function(1, &angle, &angle, block_slot<T>);
  radii(1, &pair.U1, &rho);
  return rho * angle;
}

/// All deviates of n / 2 pairs, whose uniforms are drawn where the deviates will be.
template <class T>
int32_t whole_pairs(StreamState* stream, int32_t n, T* r) {
  constexpr int32_t most = block / 2;
  alignas(32) T u1[most], u2[most], rho[most], cosines[most];
  T* const sines = u1;
  while (n > 1) {
    const int32_t pairs = n < block ? n / 2 : most;
    const int32_t status = draw_uniforms(stream, 2 * pairs, r);
    if (status < 0) return status;
    split_pairs(pairs, r, u1, u2);
    angles(pairs, u2);
    radii(pairs, u1, rho);
    kernels::sin_cos(pairs, u2, sines, cosines);
    for (int32_t k = 0; k < pairs; ++k) {
      sines[k] = sines[k] * rho[k];
      cosines[k] = cosines[k] * rho[k];
    }
    join_pairs(pairs, sines, cosines, r);
    r += 2 * pairs;
    n -= 2 * pairs;
  }
  return RNG_OK;
}

/// Standard deviates, both halves of every pair. After a failure the pair that was pending still
/// is.
template <class T>
int32_t halves_of_pairs(StreamState* stream, int32_t n, T* r) {
  Pending<T>* pending;
  int32_t status = find_or_add_record(stream, Gaussian<T>::chunk, &pending);
  if (status < 0) return status;
  if (pending->U1 != Pending<T>::none) {
    *r++ = half_of_pair<T>(*pending, kernels::cos);
    --n;
  }
  status = whole_pairs(stream, n, r);
  if (status < 0) return status;
  if (n % 2 == 0) {
    *pending = {};
    return RNG_OK;
  }
  T pair[2];
  status = draw_uniforms(stream, 2, pair);
  if (status < 0) return status;
  *pending = {pair[0], pair[1]};
  r[n - 1] = half_of_pair<T>(*pending, kernels::sin);
  return RNG_OK;
}

/// After a failure r holds standard deviates as far as they were drawn.
template <class T>
int32_t _vRngGaussianBoxMuller2(StreamState* stream, int32_t n, T* r, T a, T sigma) {
  if (n < 1) return RNG_OK;
  const int32_t status = halves_of_pairs(stream, n, r);
  if (status < 0) return status;
  for (int32_t i = 0; i < n; ++i) r[i] = a + sigma * r[i];
  return RNG_OK;
}

template <class T>
int32_t _vRngGaussianICDF(StreamState* stream, int32_t n, T* r, T a, T sigma) {
  const int32_t status = draw_uniforms(stream, n, r, T(-1), T(1));
  if (status < 0) return status;
  const T scale = static_cast<T>(root_of_two) * sigma;
  in_parts(n, r, [=](int32_t count, T* x) {
    kernels::erf_inv(count, x, x);
    for (int32_t i = 0; i < count; ++i) x[i] = a + scale * x[i];
  });
  return RNG_OK;
}

template <class T>
using Method = int32_t (*)(StreamState* stream, int32_t n, T* r, T a, T sigma);

template <class T>
constexpr Method<T> Dispatch[] = {_vRngGaussianBoxMuller<T>, _vRngGaussianBoxMuller2<T>,
                                  _vRngGaussianICDF<T>};

template <class T>
int32_t gaussian(int32_t method, StreamState* stream, int32_t n, T* r, T a, T sigma) {
  const QuietKernels quiet(_vCallBack<T>);
  return Dispatch<T>[method](stream, n, r, a, sigma);
}

}  // namespace

int32_t _zokdRngGaussian(int32_t method, StreamState* stream, int32_t n, double* r, double a,
                         double sigma) {
  return gaussian(method, stream, n, r, a, sigma);
}

int32_t _zoksRngGaussian(int32_t method, StreamState* stream, int32_t n, float* r, float a,
                         float sigma) {
  return gaussian(method, stream, n, r, a, sigma);
}
