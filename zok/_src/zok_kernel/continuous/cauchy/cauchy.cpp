// SPDX-License-Identifier: MIT
// Cauchy numbers by inversion: a + beta tan v, v on [-pi/2, pi/2). The float next to pi/2 lies
// beyond it, at both ends, so there the tangents change sides; each end has the same share of the
// numbers.
#include "../../../zok_sub_kernel/_service/quiet_kernels.hpp"
#include "../../../zok_sub_kernel/_service/vector_kernels.hpp"
#include "../_service/uniforms.hpp"

using namespace orv;

namespace {

constexpr double half_pi = 0x1.921FB54442D18p0;

template <class T>
int32_t cauchy(StreamState* stream, int32_t n, T* r, T a, T beta) {
  const QuietKernels quiet;
  constexpr T end = static_cast<T>(half_pi);
  const int32_t status = draw_uniforms(stream, n, r, -end, end);
  if (status < 0) return status;
  in_parts(n, r, [=](int32_t count, T* x) {
    kernels::tan(count, x, x);
    for (int32_t i = 0; i < count; ++i) x[i] = a + beta * x[i];
  });
  return RNG_OK;
}

}  // namespace

int32_t _zokdRngCauchy(int32_t, StreamState* stream, int32_t n, double* r, double a, double beta) {
  return cauchy(stream, n, r, a, beta);
}

int32_t _zoksRngCauchy(int32_t, StreamState* stream, int32_t n, float* r, float a, float beta) {
  return cauchy(stream, n, r, a, beta);
}
