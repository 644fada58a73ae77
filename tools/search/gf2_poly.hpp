// SPDX-License-Identifier: MIT
// Polynomials over GF(2) of degree below 2240, coefficient k in bit k % 64 of word k / 64, and
// arithmetic modulo a polynomial of degree 2203.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <tuple>
#include <utility>

#if defined(__PCLMUL__)
#include <immintrin.h>
#endif

namespace orv_search {

constexpr int poly_words = 35;
using Poly = std::array<uint64_t, poly_words>;
using DoublePoly = std::array<uint64_t, 2 * poly_words>;

inline bool bit(const Poly& p, int k) { return p[k / 64] >> (k % 64) & 1; }
inline void flip(Poly& p, int k) { p[k / 64] ^= uint64_t{1} << (k % 64); }

inline int degree(const Poly& p) {
  for (int i = poly_words - 1; i >= 0; --i)
    if (p[i]) return 64 * i + 63 - std::countl_zero(p[i]);
  return -1;
}

/// r += x^shift p; what does not fit is dropped.
inline void add_shifted(Poly& r, const Poly& p, int shift) {
  const int words = shift / 64, bits = shift % 64;
  for (int i = poly_words - 1; i >= words; --i) {
    r[i] ^= p[i - words] << bits;
    if (bits && i > words) r[i] ^= p[i - words - 1] >> (64 - bits);
  }
}

inline Poly operator^(Poly a, const Poly& b) {
  for (int i = 0; i < poly_words; ++i) a[i] ^= b[i];
  return a;
}

/// The carry-less product of two words, low word first.
inline std::pair<uint64_t, uint64_t> carryless_product(uint64_t a, uint64_t b) {
#if defined(__PCLMUL__)
  alignas(16) uint64_t r[2];
  _mm_store_si128(reinterpret_cast<__m128i*>(r),
                  _mm_clmulepi64_si128(_mm_set1_epi64x(static_cast<long long>(a)),
                                       _mm_set1_epi64x(static_cast<long long>(b)), 0));
  return {r[0], r[1]};
#else
  uint64_t low = 0, high = 0;
  for (; b; b &= b - 1) {
    const int k = std::countr_zero(b);
    low ^= a << k;
    if (k) high ^= a >> (64 - k);
  }
  return {low, high};
#endif
}

/// r[0 .. 35] += q p.
inline void add_product(uint64_t* r, const Poly& p, uint64_t q) {
#if defined(__PCLMUL__)
  const __m128i factor = _mm_set1_epi64x(static_cast<long long>(q));
  __m128i carry = _mm_setzero_si128();
  for (int i = 0; i + 1 < poly_words; i += 2) {
    const __m128i pair = _mm_loadu_si128(reinterpret_cast<const __m128i*>(&p[i]));
    const __m128i even = _mm_clmulepi64_si128(pair, factor, 0x00);
    const __m128i odd = _mm_clmulepi64_si128(pair, factor, 0x01);
    const __m128i sum = _mm_xor_si128(_mm_xor_si128(even, _mm_slli_si128(odd, 8)), carry);
    auto* place = reinterpret_cast<__m128i*>(r + i);
    _mm_storeu_si128(place, _mm_xor_si128(_mm_loadu_si128(place), sum));
    carry = _mm_srli_si128(odd, 8);
  }
  auto* place = reinterpret_cast<__m128i*>(r + poly_words - 1);
  const __m128i last =
      _mm_clmulepi64_si128(_mm_set1_epi64x(static_cast<long long>(p.back())), factor, 0);
  _mm_storeu_si128(place, _mm_xor_si128(_mm_loadu_si128(place), _mm_xor_si128(last, carry)));
#else
  for (int i = 0; i < poly_words; ++i) {
    const auto [low, high] = carryless_product(p[i], q);
    r[i] ^= low;
    r[i + 1] ^= high;
  }
#endif
}

/// Arithmetic modulo a polynomial of degree 2203 whose next coefficient is at most that of x^2172.
/// Results stay below x^2240, reduced modulo x^37 times the polynomial, until they are normalised.
class Modulus {
 public:
  static constexpr int degree = 2203;

  explicit Modulus(const Poly& p) : p_(p), tail_{} {
    Poly rest = p;
    flip(rest, degree);
    add_shifted(tail_, rest, 64 * poly_words - degree);
  }

  const Poly& polynomial() const { return p_; }

  Poly square(const Poly& a) const {
    DoublePoly r;
    for (int i = 0; i < poly_words; ++i)
      std::tie(r[2 * i], r[2 * i + 1]) = carryless_product(a[i], a[i]);
    return reduce(r);
  }

  Poly product(const Poly& a, const Poly& b) const {
    DoublePoly r{};
    for (int i = 0; i < poly_words; ++i) add_product(&r[i], a, b[i]);
    return reduce(r);
  }

  Poly normalised(Poly a) const {
    for (int k = 64 * poly_words - 1; k >= degree; --k)
      if (bit(a, k)) add_shifted(a, p_, k - degree);
    return a;
  }

  /// The inverse of a, if p is irreducible and a is not 0, by Euclid's algorithm.
  Poly inverse(const Poly& a) const {
    Poly u = p_, v = normalised(a), s{}, t{1};  // u = s a, v = t a
    while (orv_search::degree(u) > 0) {
      const int shift = orv_search::degree(u) - orv_search::degree(v);
      if (shift < 0) {
        std::swap(u, v);
        std::swap(s, t);
        continue;
      }
      add_shifted(u, v, shift);
      add_shifted(s, t, shift);
    }
    return s;
  }

 private:
  /// From the top word down, a multiple of x^37 p clears a word. Its quotient needs one correction
  /// only, since the two leading exponents of p are more than 32 apart.
  Poly reduce(DoublePoly& r) const {
    for (int i = 2 * poly_words - 1; i >= poly_words; --i) {
      const uint64_t q = r[i] ^ carryless_product(r[i], tail_.back()).second;
      add_product(&r[i - poly_words], tail_, q);
    }
    Poly low;
    for (int i = 0; i < poly_words; ++i) low[i] = r[i];
    return low;
  }

  Poly p_;
  Poly tail_;  // x^37 p - x^2240
};

}  // namespace orv_search
