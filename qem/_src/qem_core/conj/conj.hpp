// SPDX-License-Identifier: MIT
// Conj: the sign bit of each imaginary part changed, an exact bit operation.
#pragma once

#include "../frame/padded.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class Element, int elements_a_pass>
struct Conj {
  using T = Element;
  static constexpr int block = elements_a_pass;

  static __m128 lane(__m128 z) {
    const __m128 flImagPartSignXor = _mm_setr_ps(0.0f, -0.0f, 0.0f, -0.0f);
    return _mm_xor_ps(z, flImagPartSignXor);
  }
  static __m128d lane(__m128d z) {
    const __m128d imaginary_sign = _mm_setr_pd(0.0, -0.0);
    return _mm_xor_pd(z, imaginary_sign);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
