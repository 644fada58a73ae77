// SPDX-License-Identifier: MIT
// Lognormal numbers: b + beta exp(g), g from the pairs of the second Box-Muller method.
#include "../../../zok_sub_kernel/_service/quiet_kernels.hpp"
#include "../../../zok_sub_kernel/_service/vector_kernels.hpp"
#include "../_service/entries.hpp"
#include "../_service/uniforms.hpp"

using namespace orv;

namespace {

template <class T>
int32_t lognormal(StreamState* stream, int32_t n, T* r, T a, T sigma, T b, T beta) {
  const QuietKernels quiet;
  constexpr int32_t most = 2048;  // even, so that no pair is taken apart
  while (n > 0) {
    const int32_t count = n < most ? n : most;
    const int32_t status = draw_gaussians(RNG_GAUSSIAN_BOXMULLER2, stream, count, r, a, sigma);
    if (status < 0) return status;
    kernels::exp(count, r, r);
    for (int32_t i = 0; i < count; ++i) r[i] = at_least(b, b + beta * r[i]);
    r += count;
    n -= count;
  }
  return RNG_OK;
}

}  // namespace

int32_t _zokdRngLognormal(int32_t, StreamState* stream, int32_t n, double* r, double a,
                          double sigma, double b, double beta) {
  return lognormal(stream, n, r, a, sigma, b, beta);
}

int32_t _zoksRngLognormal(int32_t, StreamState* stream, int32_t n, float* r, float a, float sigma,
                          float b, float beta) {
  return lognormal(stream, n, r, a, sigma, b, beta);
}
