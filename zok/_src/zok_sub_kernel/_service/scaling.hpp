// SPDX-License-Identifier: MIT
// Where a generator's 32-bit words go: to the caller as they are, or as a + w s, from a on to b.
//
// A generator writes its recurrence once, as a template over one of these outputs:
//
//   out.four(i, words);   // elements i to i + 3 from the lanes of a vector: words, or doubles
//                         // that hold whole numbers below 2^32
//   out.one(i, word);     // element i
//
// s = (b - a) c is rounded once a call, c being the width of the generator's word, 1 / 2^32 or the
// like; an element is then one multiplication and one addition, each rounded on its own. Floats go
// through the same arithmetic in double precision and are rounded as they are stored. Either
// rounding may reach b. Elements have any alignment.
#pragma once

#include <immintrin.h>
#include <stdint.h>
#include <string.h>

namespace orv {
inline namespace ORV_TAG {

/// 2^52, in whose low bits any 32-bit word stands for itself.
inline constexpr double two_52 = 0x1p52;
inline constexpr int32_t two_52_high_word = 0x43300000;

/// Unsigned lanes as doubles, exactly.
inline __m256d to_doubles(__m128i words) {
  const __m128i high = _mm_set1_epi32(two_52_high_word);
  const __m128d lo = _mm_castsi128_pd(_mm_unpacklo_epi32(words, high));
  const __m128d hi = _mm_castsi128_pd(_mm_unpackhi_epi32(words, high));
  return _mm256_insertf128_pd(_mm256_castpd128_pd256(lo), hi, 1) - _mm256_set1_pd(two_52);
}

inline double to_double(uint32_t word) {
  const uint64_t bits = static_cast<uint64_t>(two_52_high_word) << 32 | word;
  double x;
  memcpy(&x, &bits, sizeof x);
  return x - two_52;
}

/// The way back, for whole numbers below 2^32.
inline uint32_t to_word(double whole) {
  const double shifted = whole + two_52;
  uint32_t word;
  memcpy(&word, &shifted, sizeof word);
  return word;
}
inline __m128i to_words(__m256d whole) {
  const __m256 shifted = _mm256_castpd_ps(whole + _mm256_set1_pd(two_52));
  return _mm_castps_si128(_mm_shuffle_ps(
      _mm256_castps256_ps128(shifted), _mm256_extractf128_ps(shifted, 1), _MM_SHUFFLE(2, 0, 2, 0)));
}

inline void store_four(double* r, __m256d x) { _mm256_storeu_pd(r, x); }
inline void store_four(float* r, __m256d x) { _mm_storeu_ps(r, _mm256_cvtpd_ps(x)); }

inline void store_one(double* r, double x) { memcpy(r, &x, sizeof x); }
inline void store_one(float* r, double x) {
  const auto rounded = static_cast<float>(x);
  memcpy(r, &rounded, sizeof rounded);
}

/// The words themselves.
class Words {
 public:
  explicit Words(uint32_t* r) : r_(r) {}

  void four(int32_t i, __m128i words) const {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(r_ + i), words);
  }
  void four(int32_t i, __m256d words) const { four(i, to_words(words)); }
  void one(int32_t i, uint32_t word) const { memcpy(r_ + i, &word, sizeof word); }

 private:
  uint32_t* r_;
};

/// Numbers of type T.
template <class T>
class Scaled {
 public:
  Scaled(T* r, T a, T b, double c)
      : r_(r), a_(a), s_((static_cast<double>(b) - static_cast<double>(a)) * c) {}

  void four(int32_t i, __m128i words) const { four(i, to_doubles(words)); }
  void four(int32_t i, __m256d words) const {
    store_four(r_ + i, _mm256_set1_pd(a_) + words * _mm256_set1_pd(s_));
  }
  void one(int32_t i, uint32_t word) const { store_one(r_ + i, a_ + to_double(word) * s_); }

 private:
  T* r_;
  double a_, s_;
};

/// Hands n words to an output as map(word) in ascending order, eight at a time. The words may lie
/// in the output itself, as upper_half places them.
template <class Out, class Map>
void spread(int32_t n, const uint32_t* words, const Out& out, const Map& map) {
  const auto four = [words](int32_t i) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(words + i));
  };
  int32_t i = 0;
  for (; i <= n - 8; i += 8) {
    const __m128i low = four(i), high = four(i + 4);
    out.four(i, map(low));
    out.four(i + 4, map(high));
  }
  for (; i < n; ++i) {
    uint32_t word;
    memcpy(&word, words + i, sizeof word);
    out.one(i, map(word));
  }
}

/// Room for n words in an output of n elements, from where `spread` can put them in their places.
/// Words of this room are to be read and written by vectors or memcpy.
inline uint32_t* upper_half(double* r, int32_t n) { return reinterpret_cast<uint32_t*>(r) + n; }
inline uint32_t* upper_half(float* r, int32_t) { return reinterpret_cast<uint32_t*>(r); }
inline uint32_t* upper_half(uint32_t* r, int32_t) { return r; }

}  // namespace ORV_TAG
}  // namespace orv
