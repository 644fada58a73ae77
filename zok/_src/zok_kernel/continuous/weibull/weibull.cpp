// SPDX-License-Identifier: MIT
// Weibull numbers by inversion: a + beta (-ln u)^(1/alpha).
#include "../../../zok_sub_kernel/_service/quiet_kernels.hpp"
#include "../../../zok_sub_kernel/_service/vector_kernels.hpp"
#include "../_service/ln_callback.hpp"
#include "../_service/uniforms.hpp"

using namespace orv;

namespace {

template <class T>
int32_t weibull(StreamState* stream, int32_t n, T* r, T alpha, T a, T beta) {
  const QuietKernels quiet(_vLnOnlyCallBack<T>);
  const int32_t status = draw_uniforms(stream, n, r);
  if (status < 0) return status;
  const T power = T(1) / alpha;
  in_parts(n, r, [=](int32_t count, T* x) {
    kernels::ln(count, x, x);
    for (int32_t i = 0; i < count; ++i) x[i] = T(0) - x[i];
    kernels::powx(count, x, power, x);
    for (int32_t i = 0; i < count; ++i) x[i] = at_least(a, a + beta * x[i]);
  });
  return RNG_OK;
}

}  // namespace

int32_t _zokdRngWeibull(int32_t, StreamState* stream, int32_t n, double* r, double alpha, double a,
                        double beta) {
  return weibull(stream, n, r, alpha, a, beta);
}

int32_t _zoksRngWeibull(int32_t, StreamState* stream, int32_t n, float* r, float alpha, float a,
                        float beta) {
  return weibull(stream, n, r, alpha, a, beta);
}
