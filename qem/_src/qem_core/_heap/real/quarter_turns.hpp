// SPDX-License-Identifier: MIT
// Quarter turns in an angle of any size (M. Payne and R. Hanek, 1983): the significand times those
// bits of 2/pi that matter for its exponent. Bits further up make whole turns, bits further down
// change nothing: no double comes closer to a multiple of pi/2 than 2^-62 of its quadrant, and 190
// bits behind the point are computed.
#pragma once

#include <stdint.h>

#include "../../simd/exact.hpp"
#include "tables/two_over_pi.hpp"

namespace orv {
inline namespace ORV_TAG {

/// 192 bits, the lowest word first.
struct Fixed {
  static constexpr int words = 6;
  uint32_t word[words];
};

/// 192 bits of the table, `first` being the place of the uppermost one.
inline Fixed two_over_pi_from(int first) {
  Fixed bits;
  const int index = first / 32, shift = first % 32;
  for (int k = 0; k < Fixed::words; ++k) {
    const uint64_t two =
        static_cast<uint64_t>(two_over_pi[index + k]) << 32 | two_over_pi[index + k + 1];
    bits.word[Fixed::words - 1 - k] = static_cast<uint32_t>(two << shift >> 32);
  }
  return bits;
}

/// The low 192 bits of a product.
inline Fixed product(const Fixed& a, uint64_t m) {
  Fixed r = {};
  for (int part = 0; part < 2; ++part) {
    const uint64_t factor = static_cast<uint32_t>(m >> 32 * part);
    uint64_t carry = 0;
    for (int k = 0; k + part < Fixed::words; ++k) {
      carry += a.word[k] * factor + r.word[k + part];
      r.word[k + part] = static_cast<uint32_t>(carry);
      carry >>= 32;
    }
  }
  return r;
}

inline Fixed negated(const Fixed& a) {
  Fixed r;
  uint64_t carry = 1;
  for (int k = 0; k < Fixed::words; ++k) {
    carry += static_cast<uint32_t>(~a.word[k]);
    r.word[k] = static_cast<uint32_t>(carry);
    carry >>= 32;
  }
  return r;
}

/// An unsigned fraction of 2^192, in two parts.
template <class R>
TwoParts<R> as_fraction(const Fixed& a) {
  TwoParts<R> f = {0, 0};
  R unit = R{0x1p-32};
  for (int k = Fixed::words - 1; k >= 0; --k, unit *= R{0x1p-32}) {
    const TwoParts<R> s = exact_sum_ordered(f.hi, a.word[k] * unit);
    f = {s.hi, f.lo + s.lo};
  }
  return exact_sum_ordered(f.hi, f.lo);
}

/// What is left of an angle, within an eighth of a turn, without its quarter turns.
template <class R>
struct WithoutQuarterTurns {
  int turns;  // modulo 4
  TwoParts<R> rest;
};

/// Of significand 2^exponent, from 2^-62 on.
template <class R>
WithoutQuarterTurns<R> without_quarter_turns(uint64_t significand, int exponent, TwoParts<R> pio2) {
  constexpr int top = Fixed::words - 1, padding = 64;  // zeros in front of the table's bits
  // The product has two bits before the point, the quadrant, when the uppermost bit taken of 2/pi
  // is the one that makes 2 with the lowest bit of the significand.
  Fixed turn = product(two_over_pi_from(padding + exponent - 2), significand);
  uint32_t quadrant = turn.word[top] >> 30;
  for (int k = top; k > 0; --k) turn.word[k] = turn.word[k] << 2 | turn.word[k - 1] >> 30;
  turn.word[0] <<= 2;
  const bool past_half = turn.word[top] >> 31 != 0;  // then the next quadrant is nearer
  if (past_half) turn = negated(turn), ++quadrant;

  const TwoParts<R> f = as_fraction<R>(turn);
  const TwoParts<R> p = exact_product(Halves<R>(f.hi), Halves<R>(pio2.hi));
  const TwoParts<R> r = exact_sum_ordered(p.hi, p.lo + (f.hi * pio2.lo + f.lo * pio2.hi));
  const R sign = past_half ? -1 : 1;
  return {static_cast<int>(quadrant & 3), {sign * r.hi, sign * r.lo}};
}

}  // namespace ORV_TAG
}  // namespace orv
