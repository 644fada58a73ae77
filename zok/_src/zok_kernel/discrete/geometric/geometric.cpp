// SPDX-License-Identifier: MIT
// Failures before the first success of probability p, by inversion: the floor of ln u / ln(1 - p).
#include "../../../zok_sub_kernel/_service/quiet_kernels.hpp"
#include "../../../zok_sub_kernel/_service/vector_kernels.hpp"
#include "../../continuous/_service/ln_callback.hpp"
#include "../_service/results.hpp"

using namespace orv;

namespace {

/// Truncated products of what is at least 0, cut off at the greatest integer.
void to_results(int32_t n, const double* x, double factor, int32_t* r) {
  const __m256d factors = _mm256_set1_pd(factor), most = _mm256_set1_pd(most_int);
  int32_t i = 0;
  for (; i <= n - 4; i += 4) {
    const __m256d whole = _mm256_min_pd(_mm256_load_pd(x + i) * factors, most);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(r + i), _mm256_cvttpd_epi32(whole));
  }
  for (; i < n; ++i) r[i] = to_result(x[i] * factor);
}

/// 1 / ln(1 - p), which is -0 for a p of 1.
double factor_of(double p) {
  const QuietKernels quiet;
  return 1 / kernels::ln1p(-p);
}

}  // namespace

int32_t _zokiRngGeometric(int32_t, StreamState* stream, int32_t n, int32_t* r, double p) {
  const QuietKernels quiet(_vLnCallBack<double>);
  const double factor = factor_of(p);
  return with_uniforms(stream, n, [&](int32_t count, double* u) {
    kernels::ln(count, u, u);  // of 0 it is finite
    to_results(count, u, factor, r);
    r += count;
  });
}
