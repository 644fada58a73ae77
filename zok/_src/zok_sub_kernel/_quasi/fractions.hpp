// The 32-bit fractions of a quasi-random point as numbers from a on to b: a + s w, every operation
// in the precision of the output.
#pragma once

#include "../_service/scaling.hpp"

namespace orv {
inline namespace ORV_TAG {

/// Words without their lowest bit, which leaves them a place among signed integers.
struct Halved {
  static constexpr double unit = 0x1p-31;

  static __m256d wholes(__m128i words, double) {
    return _mm256_cvtepi32_pd(_mm_srli_epi32(words, 1));
  }
  static __m128 wholes(__m128i words, float) { return _mm_cvtepi32_ps(_mm_srli_epi32(words, 1)); }
};

/// All bits of a word.
struct Whole {
  static constexpr double unit = 0x1p-32;

  static __m256d wholes(__m128i words, double) { return to_doubles(words); }

  /// A word that counts as negative is 2^32 too small.
  static __m128 wholes(__m128i words, float) {
    const __m128i negative = _mm_srai_epi32(words, 31);
    const __m128 missing = _mm_and_ps(_mm_castsi128_ps(negative), _mm_set1_ps(0x1p32f));
    return _mm_cvtepi32_ps(words) + missing;
  }
};

inline __m256d all_lanes(double x) { return _mm256_set1_pd(x); }
inline __m128 all_lanes(float x) { return _mm_set1_ps(x); }

template <class T, class Form>
class Fractions {
 public:
  Fractions(T* r, T a, T b)
      : r_(r),
        a_(a),
        s_(static_cast<T>((static_cast<double>(b) - static_cast<double>(a)) * Form::unit)) {}

  void four(int32_t i, __m128i words) const {
    const auto x = numbers(words);
    memcpy(r_ + i, &x, sizeof x);
  }
  void one(int32_t i, uint32_t word) const {
    const auto x = numbers(_mm_cvtsi32_si128(static_cast<int32_t>(word)));
    memcpy(r_ + i, &x, sizeof *r_);
  }

 private:
  auto numbers(__m128i words) const {
    return all_lanes(a_) + Form::wholes(words, T()) * all_lanes(s_);
  }

  T* r_;
  T a_, s_;
};

}  // namespace ORV_TAG
}  // namespace orv
