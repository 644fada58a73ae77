// SPDX-License-Identifier: MIT
// Poisson numbers, each with a mean of its own, each from one Gaussian number.
#include "../../../zok_sub_kernel/_service/quiet_kernels.hpp"
#include "../../../zok_sub_kernel/_service/vector_kernels.hpp"
#include "../poisson/poisson_normal.hpp"

using namespace orv;

namespace {

constexpr int32_t most = 1024;

/// Means below 1: how many of the first 11 cumulative probabilities lie below that of g. What is no
/// mean gives 0, or 11. The n numbers' places are told.
void below_1(int32_t n, const int32_t* place, const double* lambda, const float* g, int32_t* r) {
  alignas(32) double probability[most], exp[most];
  for (int32_t j = 0; j < n; ++j) {
    probability[j] = g[place[j]];
    exp[j] = lambda[place[j]];
  }
  kernels::cdf_norm(n, probability, probability);
  kernels::exp(n, exp, exp);
  for (int32_t j = 0; j < n; ++j) {
    const double scaled = probability[j] * exp[j];
    double sum = 1, term = 1;
    int32_t k = 0;
    for (; k < 11 && scaled > sum; ++k) {
      term = term * lambda[place[j]] / (k + 1);
      sum += term;
    }
    r[place[j]] = k;
  }
}

}  // namespace

int32_t _zokiRngPoissonV(int32_t, StreamState* stream, int32_t n, int32_t* r,
                         const double* lambda) {
  const QuietKernels quiet;
  return with_gaussians(stream, n, [&](int32_t count, const float* g) {
    int32_t small[most], small_count = 0;
    for (int32_t i = 0; i < count; ++i) {
      if (lambda[i] >= 1 && lambda[i] <= __DBL_MAX__) {
        r[i] = PoissonCurve(lambda[i])(g[i]);
      } else {
        small[small_count++] = i;
      }
    }
    below_1(small_count, small, lambda, g, r);
    r += count;
    lambda += count;
  });
}
