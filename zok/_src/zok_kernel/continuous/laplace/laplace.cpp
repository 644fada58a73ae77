// SPDX-License-Identifier: MIT
// Laplace numbers: an exponential one, and a second uniform number for its side.
#include "../../../zok_sub_kernel/_service/quiet_kernels.hpp"
#include "../../../zok_sub_kernel/_service/vector_kernels.hpp"
#include "../_service/ln_callback.hpp"
#include "../_service/pairs.hpp"
#include "../_service/uniforms.hpp"

using namespace orv;

namespace {

constexpr int32_t block = 1024;

/// Up to a block's numbers from pairs of uniforms. Draws also where there are none to make.
template <class T>
int32_t laplace_block(StreamState* stream, int32_t n, T* r, T a, T beta) {
  alignas(32) T buffer[2 * block], u[block];
  const int32_t status = draw_uniforms(stream, 2 * n, buffer);
  if (status < 0) return status;
  T* const side = buffer;
  split_pairs(n, buffer, u, side);
  kernels::ln(n, u, r);
  const T minus_beta = T(0) - beta;
  for (int32_t k = 0; k < n; ++k) {
    r[k] = a + (side[k] <= T(0.5) ? minus_beta : beta) * r[k];
  }
  return RNG_OK;
}

template <class T>
int32_t laplace(StreamState* stream, int32_t n, T* r, T a, T beta) {
  const QuietKernels quiet(_vLnCallBack<T>);
  if (n < 0) n = 0;
  for (;; n -= block, r += block) {
    const int32_t count = n < block ? n : block;
    const int32_t status = laplace_block(stream, count, r, a, beta);
    if (status < 0 || count < block) return status;
  }
}

}  // namespace

int32_t _zokdRngLaplace(int32_t, StreamState* stream, int32_t n, double* r, double a, double beta) {
  return laplace(stream, n, r, a, beta);
}

int32_t _zoksRngLaplace(int32_t, StreamState* stream, int32_t n, float* r, float a, float beta) {
  return laplace(stream, n, r, a, beta);
}
