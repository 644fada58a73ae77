// SPDX-License-Identifier: MIT
// Where the 32-bit fractions of quasi-random points go: to the caller as they are, or as a + s w,
// every operation in the precision of the output.
//
// Points follow from each other by sums without carries, which may be taken of what stands for a
// word instead: its place. An output tells what a vector of places holds and what becomes of it.
#pragma once

#include "../_service/scaling.hpp"

namespace orv {
inline namespace ORV_TAG {

/// How much of a word counts.
struct Halved {  // all but the lowest bit: a place among signed integers
  static constexpr double unit = 0x1p-31;
  static constexpr int dropped = 1;

  static __m256 wholes(__m256i places) { return _mm256_cvtepi32_ps(places); }
};
struct Whole {
  static constexpr double unit = 0x1p-32;
  static constexpr int dropped = 0;

  /// A word that counts as negative is 2^32 too small.
  static __m256 wholes(__m256i places) {
    const __m256 x = _mm256_cvtepi32_ps(places);
    const __m256 negative = _mm256_cmp_ps(x, _mm256_setzero_ps(), _CMP_LT_OQ);
    return x + _mm256_and_ps(negative, _mm256_set1_ps(0x1p32f));
  }
};

/// Words as they are.
class PlainWords : public Words {
 public:
  using Place = uint32_t;
  static constexpr Place base = 0;

  explicit PlainWords(uint32_t* r) : Words(r), r_(r) {}

  static Place place(uint32_t word) { return word; }
  void vector(int32_t i, __m256i places) const {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(r_ + i), places);
  }

 private:
  uint32_t* r_;
};

template <class T, class Form>
class Fractions;

/// A place is the low half of 2^52 + w; of differences, without the 2^52.
template <class Form>
class Fractions<double, Form> {
 public:
  using Place = uint64_t;
  static constexpr Place base = uint64_t{two_52_high_word} << 32;

  Fractions(double* r, double a, double b) : r_(r), a_(a), s_((b - a) * Form::unit) {}

  static Place place(uint32_t word) { return word >> Form::dropped; }
  void vector(int32_t i, __m256i places) const {
    put(i, _mm256_castsi256_pd(places) - _mm256_set1_pd(two_52));
  }
  void four(int32_t i, __m128i words) const {
    put(i, to_doubles(_mm_srli_epi32(words, Form::dropped)));
  }
  void one(int32_t i, uint32_t word) const {
    store_one(r_ + i, a_ + to_double(word >> Form::dropped) * s_);
  }

 private:
  void put(int32_t i, __m256d wholes) const {
    store_four(r_ + i, _mm256_set1_pd(a_) + wholes * _mm256_set1_pd(s_));
  }

  double* r_;
  double a_, s_;
};

template <class Form>
class Fractions<float, Form> {
 public:
  using Place = uint32_t;
  static constexpr Place base = 0;

  Fractions(float* r, float a, float b)
      : r_(r),
        a_(a),
        s_(static_cast<float>((static_cast<double>(b) - static_cast<double>(a)) * Form::unit)) {}

  static Place place(uint32_t word) { return word >> Form::dropped; }
  void vector(int32_t i, __m256i places) const { _mm256_storeu_ps(r_ + i, numbers(places)); }
  void four(int32_t i, __m128i words) const {
    _mm_storeu_ps(r_ + i, _mm256_castps256_ps128(numbers(
                              _mm256_castsi128_si256(_mm_srli_epi32(words, Form::dropped)))));
  }
  void one(int32_t i, uint32_t word) const {
    const __m256 x = numbers(_mm256_set1_epi32(static_cast<int32_t>(place(word))));
    memcpy(r_ + i, &x, sizeof *r_);
  }

 private:
  __m256 numbers(__m256i places) const {
    return _mm256_set1_ps(a_) + Form::wholes(places) * _mm256_set1_ps(s_);
  }

  float* r_;
  float a_, s_;
};

}  // namespace ORV_TAG
}  // namespace orv
