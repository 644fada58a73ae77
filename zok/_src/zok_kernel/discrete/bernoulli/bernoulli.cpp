// SPDX-License-Identifier: MIT
// 1 with probability p, else 0: whether a float lies below p, both compared by their bits, which
// order numbers from 0 on as they do integers.
#include <immintrin.h>
#include <orv/zok.h>
#include <string.h>

namespace {

/// Where the ones end. A uniform may be 1, which has to lie below a p of 1.
int32_t border_of(double p) {
  const float border = static_cast<float>(p);
  int32_t bits;
  memcpy(&bits, &border, sizeof bits);
  return border >= 1 ? bits + 1 : bits;
}

}  // namespace

int32_t _zokiRngBernoulli(int32_t, StreamState* stream, int32_t n, int32_t* r, double p) {
  const int32_t status = _zoksRngUniform(0, stream, n, reinterpret_cast<float*>(r), 0, 1);
  if (status < 0) return status;
  const int32_t border = border_of(p);
  const __m128i borders = _mm_set1_epi32(border);
  int32_t i = 0;
  for (; i <= n - 4; i += 4) {
    auto* const four = reinterpret_cast<__m128i*>(r + i);
    _mm_storeu_si128(four, _mm_srli_epi32(_mm_cmpgt_epi32(borders, _mm_loadu_si128(four)), 31));
  }
  for (; i < n; ++i) {
    int32_t bits;
    memcpy(&bits, r + i, sizeof bits);
    r[i] = border > bits;
  }
  return status;
}
