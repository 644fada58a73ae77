// SPDX-License-Identifier: MIT
// Integers on [a, b), each the floor of one double, which rounding may bring to b: the range may be
// wider than 32 bits can count.
#include <immintrin.h>
#include <orv/zok.h>

namespace {

constexpr int32_t block = 1024;

void floors(int32_t n, const double* x, int32_t* r) {
  int32_t i = 0;
  for (; i <= n - 4; i += 4) {
    const __m256d whole = _mm256_floor_pd(_mm256_load_pd(x + i));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(r + i), _mm256_cvttpd_epi32(whole));
  }
  for (; i < n; ++i) r[i] = static_cast<int32_t>(__builtin_floor(x[i]));
}

}  // namespace

int32_t _zokiRngUniform(int32_t, StreamState* stream, int32_t n, int32_t* r, int32_t a, int32_t b) {
  alignas(32) double buffer[block];
  while (n > 0) {
    const int32_t count = n < block ? n : block;
    const int32_t status = _zokdRngUniform(0, stream, count, buffer, a, b);
    if (status < 0) return status;
    floors(count, buffer, r);
    r += count;
    n -= count;
  }
  return RNG_OK;
}
