// SPDX-License-Identifier: MIT
// Table look-up, a table entry a lane.
//
// Indices travel through memory: a store and scalar loads leave the shuffle port to the entries.
// The double exponential took 0.85 (64-bit) and 0.93 (32-bit) of its time with extracted lanes.
#pragma once

#include <stddef.h>

#include "format.hpp"
#include "vectors.hpp"

namespace orv {
inline namespace ORV_TAG {

/// Two adjacent numbers, such as the high and low parts of one value.
template <class T>
struct alignas(2 * sizeof(T)) Pair {
  T first, second;
};

/// Four adjacent numbers, and three, of which a table need not be aligned.
template <class T>
struct alignas(4 * sizeof(T)) Quad {
  T number[4];
};
template <class T>
struct Triple {
  T number[3];
};

/// The lanes' 32-bit words in memory.
template <class V>
struct Words {
  alignas(sizeof(V)) uint32_t word[sizeof(V) / 4];

  explicit Words(V v) {
    memcpy(word, &v, sizeof v);
    asm("" : "+m"(word));  // keeps the compiler from turning the loads into extractions
  }
};

/// An index in the low word of each lane.
template <class V>
class Indices {
 public:
  explicit Indices(V v) : words_(v) {}

  template <class Entry>
  const Entry* entry(const Entry* table, int lane) const {
    return table + words_.word[lane * (sizeof(Lane<V>) / 4)];
  }

 private:
  Words<V> words_;
};

/// Twice an index in the low word of each lane: an address without a further shift.
template <class V>
class TwiceIndices {
 public:
  explicit TwiceIndices(V v) : words_(v) {}

  template <class Entry>
  const Entry* entry(const Entry* table, int lane) const {
    const size_t offset = words_.word[lane * (sizeof(Lane<V>) / 4)] * (sizeof(Entry) / 2);
    return reinterpret_cast<const Entry*>(reinterpret_cast<const char*>(table) + offset);
  }

 private:
  Words<V> words_;
};

/// An index in the word of each lane that holds its exponent: that word's bits from `shift` up,
/// counted from `first` on.
template <class V, int shift, ptrdiff_t first = 0>
class IndicesInHighWord {
 public:
  explicit IndicesInHighWord(V v) : words_(v) {}

  template <class Entry>
  const Entry* entry(const Entry* table, int lane) const {
    constexpr int words = sizeof(Lane<V>) / 4;
    const ptrdiff_t index = words_.word[words * lane + words - 1] >> shift;
    return table + (index - first);
  }

 private:
  Words<V> words_;
};

/// A whole number from 2^k to 2^(k + 1) in each lane, as its own index: its fraction bits count the
/// entries after that of 2^k, so no conversion to an integer is needed.
template <class V, int k>
class IndicesFrom2To {
 public:
  explicit IndicesFrom2To(V v) : words_(v) {}

  template <class Entry>
  const Entry* entry(const Entry* table, int lane) const {
    constexpr bool is_double = sizeof(Lane<V>) == 8;
    constexpr int fraction_bits = is_double ? 20 : 23;  // of the word that holds the exponent
    constexpr uint32_t exponent = Format<Lane<V>>::bias + k;
    constexpr int shift = fraction_bits - k - __builtin_ctz(sizeof(Entry));
    constexpr ptrdiff_t first = exponent << fraction_bits >> shift;
    const ptrdiff_t offset = words_.word[is_double ? 2 * lane + 1 : lane] >> shift;
    return reinterpret_cast<const Entry*>(reinterpret_cast<const char*>(table) + (offset - first));
  }

 private:
  Words<V> words_;
};

/// In the low word of each lane an entry's index times the size of a lane's number, where entries
/// are `apart` numbers apart, whatever is taken of them.
template <class V, int apart>
class OffsetsOfNumbers {
 public:
  explicit OffsetsOfNumbers(V v) : words_(v) {}

  template <class Entry>
  const Entry* entry(const Entry* table, int lane) const {
    const ptrdiff_t offset = words_.word[lane * (sizeof(Lane<V>) / 4)];
    return reinterpret_cast<const Entry*>(reinterpret_cast<const char*>(table) + offset * apart);
  }

 private:
  Words<V> words_;
};

/// Two floats moved as one double.
inline const double* as_double(const Pair<float>* entry) {
  return reinterpret_cast<const double*>(entry);
}

template <class I>
__m128d lookup(const double* table, const I& i, __m128d) {
  return _mm_loadh_pd(_mm_load_sd(i.entry(table, 0)), i.entry(table, 1));
}
template <class I>
void lookup(const Pair<double>* table, const I& i, __m128d& first, __m128d& second) {
  const __m128d a = _mm_load_pd(&i.entry(table, 0)->first),
                b = _mm_load_pd(&i.entry(table, 1)->first);
  first = _mm_unpacklo_pd(a, b);
  second = _mm_unpackhi_pd(a, b);
}

/// Number j of each lane's entry goes to x[j].
template <class I>
void lookup(const Quad<double>* table, const I& i, __m128d (&x)[4]) {
  const double *a = i.entry(table, 0)->number, *b = i.entry(table, 1)->number;
  deinterleave(_mm_load_pd(a), _mm_load_pd(b), x[0], x[1]);
  deinterleave(_mm_load_pd(a + 2), _mm_load_pd(b + 2), x[2], x[3]);
}
template <class I>
void lookup(const Triple<double>* table, const I& i, __m128d (&x)[3]) {
  const double *a = i.entry(table, 0)->number, *b = i.entry(table, 1)->number;
  deinterleave(_mm_loadu_pd(a), _mm_loadu_pd(b), x[0], x[1]);
  x[2] = _mm_loadh_pd(_mm_load_sd(a + 2), b + 2);
}

template <class I>
__m128 lookup(const float* table, const I& i, __m128) {
  const __m128 a = _mm_unpacklo_ps(_mm_load_ss(i.entry(table, 0)), _mm_load_ss(i.entry(table, 1)));
  const __m128 b = _mm_unpacklo_ps(_mm_load_ss(i.entry(table, 2)), _mm_load_ss(i.entry(table, 3)));
  return _mm_movelh_ps(a, b);
}
template <class I>
void lookup(const Quad<float>* table, const I& i, __m128 (&x)[4]) {
  for (int k = 0; k < 4; ++k) x[k] = _mm_load_ps(i.entry(table, k)->number);
  _MM_TRANSPOSE4_PS(x[0], x[1], x[2], x[3]);
}
template <class I>
void lookup(const Pair<float>* table, const I& i, __m128& first, __m128& second) {
  const auto two = [&](int k) {
    __m128d entries = _mm_load_sd(as_double(i.entry(table, k)));
    entries = _mm_loadh_pd(entries, as_double(i.entry(table, k + 1)));
    return _mm_castpd_ps(entries);
  };
  const __m128 a = two(0), b = two(2);
  first = _mm_shuffle_ps(a, b, _MM_SHUFFLE(2, 0, 2, 0));
  second = _mm_shuffle_ps(a, b, _MM_SHUFFLE(3, 1, 3, 1));
}

#ifdef __AVX__
template <class I>
__m256d lookup(const double* table, const I& i, __m256d) {
  const __m128d lo = _mm_loadh_pd(_mm_load_sd(i.entry(table, 0)), i.entry(table, 1));
  const __m128d hi = _mm_loadh_pd(_mm_load_sd(i.entry(table, 2)), i.entry(table, 3));
  return _mm256_insertf128_pd(_mm256_castpd128_pd256(lo), hi, 1);
}
template <class I>
void lookup(const Pair<double>* table, const I& i, __m256d& first, __m256d& second) {
  const auto two = [&](int k) {
    const __m256d lower = _mm256_castpd128_pd256(_mm_load_pd(&i.entry(table, k)->first));
    return _mm256_insertf128_pd(lower, _mm_load_pd(&i.entry(table, k + 2)->first), 1);
  };
  const __m256d a = two(0), b = two(1);
  first = _mm256_unpacklo_pd(a, b);
  second = _mm256_unpackhi_pd(a, b);
}

template <class I>
void lookup(const Quad<double>* table, const I& i, __m256d (&x)[4]) {
  const auto two = [&](int k, int j) {
    const __m256d lower = _mm256_castpd128_pd256(_mm_load_pd(i.entry(table, k)->number + j));
    return _mm256_insertf128_pd(lower, _mm_load_pd(i.entry(table, k + 2)->number + j), 1);
  };
  for (int j = 0; j < 4; j += 2) {
    const __m256d a = two(0, j), b = two(1, j);
    x[j] = _mm256_unpacklo_pd(a, b);
    x[j + 1] = _mm256_unpackhi_pd(a, b);
  }
}
template <class I>
void lookup(const Triple<double>* table, const I& i, __m256d (&x)[3]) {
  const auto two = [&](int k) {
    const __m256d lower = _mm256_castpd128_pd256(_mm_loadu_pd(i.entry(table, k)->number));
    return _mm256_insertf128_pd(lower, _mm_loadu_pd(i.entry(table, k + 2)->number), 1);
  };
  const __m256d a = two(0), b = two(1);
  x[0] = _mm256_unpacklo_pd(a, b);
  x[1] = _mm256_unpackhi_pd(a, b);
  const auto third = [&](int k) { return i.entry(table, k)->number + 2; };
  const __m128d lo = _mm_loadh_pd(_mm_load_sd(third(0)), third(1));
  const __m128d hi = _mm_loadh_pd(_mm_load_sd(third(2)), third(3));
  x[2] = _mm256_insertf128_pd(_mm256_castpd128_pd256(lo), hi, 1);
}

template <class I>
__m256 lookup(const float* table, const I& i, __m256) {
  const auto four = [&](int k) {
    __m128 entries = _mm_load_ss(i.entry(table, k));
    entries = _mm_insert_ps(entries, _mm_load_ss(i.entry(table, k + 1)), 0x10);
    entries = _mm_insert_ps(entries, _mm_load_ss(i.entry(table, k + 2)), 0x20);
    return _mm_insert_ps(entries, _mm_load_ss(i.entry(table, k + 3)), 0x30);
  };
  return _mm256_insertf128_ps(_mm256_castps128_ps256(four(0)), four(4), 1);
}
template <class I>
void lookup(const Quad<float>* table, const I& i, __m256 (&x)[4]) {
  const auto two = [&](int k) {
    const __m256 lower = _mm256_castps128_ps256(_mm_load_ps(i.entry(table, k)->number));
    return _mm256_insertf128_ps(lower, _mm_load_ps(i.entry(table, k + 4)->number), 1);
  };
  const __m256 a = two(0), b = two(1), c = two(2), d = two(3);
  const auto lo = [](__m256 y, __m256 z) { return _mm256_castps_pd(_mm256_unpacklo_ps(y, z)); };
  const auto hi = [](__m256 y, __m256 z) { return _mm256_castps_pd(_mm256_unpackhi_ps(y, z)); };
  x[0] = _mm256_castpd_ps(_mm256_unpacklo_pd(lo(a, b), lo(c, d)));
  x[1] = _mm256_castpd_ps(_mm256_unpackhi_pd(lo(a, b), lo(c, d)));
  x[2] = _mm256_castpd_ps(_mm256_unpacklo_pd(hi(a, b), hi(c, d)));
  x[3] = _mm256_castpd_ps(_mm256_unpackhi_pd(hi(a, b), hi(c, d)));
}
template <class I>
void lookup(const Pair<float>* table, const I& i, __m256& first, __m256& second) {
  const auto four = [&](int k) {
    const auto entry = [&](int j) { return as_double(i.entry(table, j)); };
    const __m128d lo = _mm_loadh_pd(_mm_load_sd(entry(k)), entry(k + 1));
    const __m128d hi = _mm_loadh_pd(_mm_load_sd(entry(k + 4)), entry(k + 5));
    return _mm256_castpd_ps(_mm256_insertf128_pd(_mm256_castpd128_pd256(lo), hi, 1));
  };
  const __m256 a = four(0), b = four(2);
  first = _mm256_shuffle_ps(a, b, _MM_SHUFFLE(2, 0, 2, 0));
  second = _mm256_shuffle_ps(a, b, _MM_SHUFFLE(3, 1, 3, 1));
}
#endif

}  // namespace ORV_TAG
}  // namespace orv
