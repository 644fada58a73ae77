// SPDX-License-Identifier: MIT
// Extended numbers (80 bits, x87) as their parts.
//
// The routines of this folder compute what is small beside the result in doubles, whose operations
// and conversions are quicker, and the rest in extended arithmetic. They need the x87 unit at its
// full precision, and use nothing of it but what IEEE defines: their bits are the same everywhere.
#pragma once

#include <stdint.h>
#include <string.h>

#include "../../simd/exact.hpp"

namespace orv {
inline namespace ORV_TAG {

using Extended = long double;

inline constexpr int extended_bias = 16383;
inline constexpr TwoParts<Extended> extended_pi = {0x1.921FB54442D1846Ap+1L,
                                                   -0x1.D9CCEBA3F91F1976p-65L};
inline constexpr TwoParts<Extended> extended_pio2 = {extended_pi.hi / 2, extended_pi.lo / 2};

inline uint64_t significand_of(Extended x) {
  uint64_t bits;
  memcpy(&bits, &x, sizeof bits);
  return bits;
}

/// Sign and exponent field.
inline uint16_t head_of(Extended x) {
  uint16_t head;
  memcpy(&head, reinterpret_cast<const char*>(&x) + 8, sizeof head);
  return head;
}
inline int exponent_field(Extended x) { return head_of(x) & 0x7FFF; }

inline Extended extended_from(uint16_t head, uint64_t significand) {
  Extended x = 0;
  memcpy(&x, &significand, sizeof significand);
  memcpy(reinterpret_cast<char*>(&x) + 8, &head, sizeof head);
  return x;
}

/// The low 32 bits of a double's pattern, which are an integer's once a shifter was added to it.
inline int low_word(double x) { return _mm_cvtsi128_si32(_mm_castpd_si128(_mm_set_sd(x))); }

/// 1 if the sign of x is set, denormal beyond a double's range or not.
inline int sign_of(Extended x) { return _mm_movemask_pd(_mm_set_sd(static_cast<double>(x))); }

/// -1 if that bit of an integer is set, else 1.
inline double sign_from_bit(int bits, int place) { return 1 - (bits >> place << 1 & 2); }

/// x < y ? a : 0 and x < y ? a : b, without a jump.
inline double if_less(double x, double y, double a) {
  return _mm_cvtsd_f64(_mm_and_pd(_mm_cmplt_sd(_mm_set_sd(x), _mm_set_sd(y)), _mm_set_sd(a)));
}
inline double if_less(double x, double y, double a, double b) {
  const __m128d mask = _mm_cmplt_sd(_mm_set_sd(x), _mm_set_sd(y));
  return _mm_cvtsd_f64(
      _mm_or_pd(_mm_and_pd(mask, _mm_set_sd(a)), _mm_andnot_pd(mask, _mm_set_sd(b))));
}
inline double greater(double x, double y) {
  return _mm_cvtsd_f64(_mm_max_sd(_mm_set_sd(x), _mm_set_sd(y)));
}
inline double lesser(double x, double y) {
  return _mm_cvtsd_f64(_mm_min_sd(_mm_set_sd(x), _mm_set_sd(y)));
}

inline double absolute(double x) { return __builtin_fabs(x); }
inline Extended absolute(Extended x) { return __builtin_fabsl(x); }

/// A double cut to 32 significant bits.
inline double first_32_bits(double x) {
  const __m128d mask = _mm_castsi128_pd(_mm_set_epi32(0, 0, -1, -(1 << 21)));
  return _mm_cvtsd_f64(_mm_and_pd(_mm_set_sd(x), mask));
}

/// 2^n of normal doubles.
inline double double_power_of_two(int n) {
  return _mm_cvtsd_f64(_mm_castsi128_pd(_mm_slli_epi64(_mm_cvtsi32_si128(n + 1023), 52)));
}

/// x 2^n for any n, rounded once, near 1 quickly.
inline Extended scaled(Extended x, int n) {
  if (__builtin_expect(-1022 <= n && n <= 1023, true)) return x * double_power_of_two(n);
  const int first = n < -16000 ? -16000 : n > 16000 ? 16000 : n;
  const int second = n - first < -16000 ? -16000 : n - first > 16000 ? 16000 : n - first;
  constexpr uint64_t one = uint64_t{1} << 63;
  const auto power = [](int e) {
    return extended_from(static_cast<uint16_t>(extended_bias + e), one);
  };
  // The greater part first: what is denormal at the end is rounded there.
  return x * power(first) * power(second);
}

/// A number and a double near it, which is at hand sooner than if it were rounded.
struct Approached {
  Extended value;
  double near;

  Approached(double x) : value(x), near(x) {}
  Approached(Extended x) : value(x), near(static_cast<double>(x)) {}
  Approached(Extended x, double rounded) : value(x), near(rounded) {}
};

inline bool is_nan(Extended x) { return x != x; }
inline bool is_infinite(Extended x) { return __builtin_fabsl(x) == __builtin_infl(); }

}  // namespace ORV_TAG
}  // namespace orv
