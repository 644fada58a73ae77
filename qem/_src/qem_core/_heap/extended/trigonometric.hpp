// SPDX-License-Identifier: MIT
// Sine and cosine of extended numbers.
//
// x = k pi/256 + r. A table has the sine of the first 128 steps in two parts, and by symmetry those
// of all others; sine and cosine of r come from their series, of which all but the first term fit a
// double. The addition theorems join them.
#pragma once

#include "../real/quarter_turns.hpp"
#include "format.hpp"
#include "tables/sine_table.hpp"

namespace orv {
inline namespace ORV_TAG {

struct SinCos {
  Extended sine, cosine;
};

/// Of x, of which `lower` is a second part, and a number of quarter turns. |x| is from 2^-32 to
/// 2^11, or there are such turns.
[[gnu::always_inline]] inline SinCos sincos_near(double x, double lower = -0.0,
                                                 int quarter_turns = 0) {
  constexpr double steps = 0x1.45F306DC9C883p+6, shifter = 0x1.8p52;             // 256/pi
  constexpr double step1 = 0x1.921FB54440000p-7, step2 = 0x1.68C234C4C0000p-46;  // 35 bits each
  constexpr double step3 = 0x1.98A2E03707345p-84;
  const double shifted = x * steps + shifter, k = shifted - shifter;
  const double near = x - k * step1, second = k * step2, third = k * step3;
  const Extended r = ((Extended{near} - second) - third) + Extended{lower};
  const double t = (near - second) + lower, v = t * t;
  const double cubic =
      t * (v * (v * (0x1.1111111111111p-7 - v * 0x1.A01A01A01A01Ap-13) - 0x1.5555555555555p-3));
  const double versine = v * (0.5 - v * (0x1.5555555555555p-5 - v * 0x1.6C16C16C16C17p-10));

  // Half turns change both signs, and the second quarter that of the cosine.
  const int position = low_word(shifted) + 128 * quarter_turns;
  const int before_quarter = 128 - (position & 255);
  const int row = before_quarter < 0 ? -before_quarter : before_quarter;
  const double sine_sign = sign_from_bit(position, 8);
  const double cosine_sign = sign_from_bit(position + 128, 8);
  const double* sine = sine_table[128 - row];
  const double* cosine = sine_table[row];
  const double a = sine[0] * sine_sign, a_lo = sine[1] * sine_sign;
  const double b = cosine[0] * cosine_sign, b_lo = cosine[1] * cosine_sign;
  const Extended s = r + cubic;
  return {a + (b * s + (a_lo + (b_lo * t - a * versine))),
          b - (a * s + (a_lo * t + (b * versine - b_lo)))};
}

/// Of a number in two parts.
[[gnu::always_inline]] inline SinCos sincos_near(const TwoParts<Extended>& x,
                                                 int quarter_turns = 0) {
  const double near = static_cast<double>(x.hi);
  return sincos_near(near, static_cast<double>((x.hi - near) + x.lo), quarter_turns);
}

/// Of large angles, and of so small ones that the sine is the angle.
[[gnu::noinline]] inline SinCos sincos_at_ends(Extended x, Extended lower) {
  const Extended size = __builtin_fabsl(x);
  if (size < 1) return {x + lower, 1};
  if (!(size < 0x1p1040L)) return {x - x, x - x};
  const auto [turns, rest] = without_quarter_turns<Extended>(
      significand_of(x), exponent_field(x) - extended_bias - 63, extended_pio2);
  if (x > 0) return sincos_near({rest.hi, rest.lo + lower}, turns);
  return sincos_near({-rest.hi, lower - rest.lo}, -turns);
}

/// Of any x below 2^1040, where the bits of 2/pi end.
[[gnu::always_inline]] inline SinCos sincos_of(double x) {
  const double size = absolute(x);
  const bool usual = size > 0x1p-32 && size < 0x1p11;
  return __builtin_expect(usual, true) ? sincos_near(x) : sincos_at_ends(x, -0.0L);
}
[[gnu::always_inline]] inline SinCos sincos_of(const TwoParts<Extended>& x) {
  const double size = absolute(static_cast<double>(x.hi));
  const bool usual = size > 0x1p-32 && size < 0x1p11;
  return __builtin_expect(usual, true) ? sincos_near(x) : sincos_at_ends(x.hi, x.lo);
}
/// An extended number may be so near to a multiple of pi that only the first few leave enough bits.
inline SinCos sincos_of(Extended x) {
  const Extended size = __builtin_fabsl(x);
  return size > 0x1p-32L && size < 8 ? sincos_near({x, 0}) : sincos_at_ends(x, -0.0L);
}

}  // namespace ORV_TAG
}  // namespace orv
