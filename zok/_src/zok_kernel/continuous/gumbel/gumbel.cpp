// SPDX-License-Identifier: MIT
// Gumbel numbers, the limit of smallest values: a + beta ln e, e exponential.
#include "../../../zok_sub_kernel/_service/quiet_kernels.hpp"
#include "../../../zok_sub_kernel/_service/vector_kernels.hpp"
#include "../_service/entries.hpp"
#include "../_service/ln_callback.hpp"
#include "../_service/uniforms.hpp"

using namespace orv;

namespace {

/// e is 0 where u has been rounded to 1: it stands for a u less than half a step below, whose
/// middle this is the logarithm for. That of the smallest number would be an outlier, in floats one
/// in thirty million.
template <class T>
inline constexpr double ln_of_none = -38.123094930796995;  // 2^-55
template <>
inline constexpr double ln_of_none<float> = -18.021826694558577;  // 2^-26

template <class T>
int32_t _vLnOfNoneCallBack(QemErrorContext* context) {
  replace_results(context, ln_of_none<T>);
  return 0;
}

template <class T>
int32_t gumbel(StreamState* stream, int32_t n, T* r, T a, T beta) {
  const int32_t status = draw_exponentials(stream, n, r);
  if (status < 0) return status;
  const QuietKernels quiet(_vLnOfNoneCallBack<T>);
  in_parts(n, r, [=](int32_t count, T* x) {
    kernels::ln(count, x, x);
    for (int32_t i = 0; i < count; ++i) x[i] = a + beta * x[i];
  });
  return RNG_OK;
}

}  // namespace

int32_t _zokdRngGumbel(int32_t, StreamState* stream, int32_t n, double* r, double a, double beta) {
  return gumbel(stream, n, r, a, beta);
}

int32_t _zoksRngGumbel(int32_t, StreamState* stream, int32_t n, float* r, float a, float beta) {
  return gumbel(stream, n, r, a, beta);
}
