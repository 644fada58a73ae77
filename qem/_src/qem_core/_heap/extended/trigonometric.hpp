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

/// Of x, of which `lower` is a second part, and a number of quarter turns. |x| is below 2^11.
[[gnu::always_inline]] inline SinCos sincos_near(Extended x, Extended lower = -0.0L,
                                                 int quarter_turns = 0) {
  constexpr double steps = 0x1.45F306DC9C883p+6, shifter = 0x1.8p52;  // 256/pi
  // 44 bits each, and positive, so that a zero keeps its sign.
  constexpr double step1 = 0x1.921FB54442Cp-7, step2 = 0x1.18469898CC4p-51;
  constexpr Extended step3 = 0x1.1701B839A252049Cp-95L;
  const double shifted = static_cast<double>(x) * steps + shifter;
  const Extended k = shifted - shifter;
  const Extended r = (((x - k * step1) - k * step2) - k * step3) + lower;

  const double t = static_cast<double>(r), v = t * t;
  // A product, which keeps the sign of a zero.
  const Extended s = r * (1 + Extended{v * (v * (0x1.1111111111111p-7 - v * 0x1.A01A01A01A01Ap-13) -
                                            0x1.5555555555555p-3)});
  const double versine = v * (0.5 - v * (0x1.5555555555555p-5 - v * 0x1.6C16C16C16C17p-10));

  const int position = low_word(shifted) + 128 * quarter_turns;
  const int row = position & 128 ? 128 - (position & 127) : position & 127;
  const double* sine = sine_table[row];
  const double* cosine = sine_table[128 - row];
  const double sine_sign = position & 256 ? -1 : 1, cosine_sign = (position + 128) & 256 ? -1 : 1;
  const Extended a = sine[0] * sine_sign, al = sine[1] * sine_sign;
  const Extended b = cosine[0] * cosine_sign, bl = cosine[1] * cosine_sign;
  // Row 0 has -0, with which a zero keeps its sign.
  return {a - (a * versine - ((b + bl) * s + al)), b - (b * versine + ((a + al) * s - bl))};
}

/// Beyond that.
[[gnu::noinline]] inline SinCos sincos_far(Extended x, Extended lower) {
  const auto [turns, rest] = without_quarter_turns<Extended>(
      significand_of(x), exponent_field(x) - extended_bias - 63, extended_pio2);
  if (x > 0) return sincos_near(rest.hi, rest.lo + lower, turns);
  return sincos_near(-rest.hi, lower - rest.lo, -turns);
}

/// Of any x below 2^1040, where the bits of 2/pi end, of which `lower` is a second part.
[[gnu::always_inline]] inline SinCos sincos_of(Extended x, Extended lower = -0.0L) {
  if (__builtin_expect(__builtin_fabsl(x) < 0x1p11L, true)) return sincos_near(x, lower);
  if (!(__builtin_fabsl(x) < 0x1p1040L)) return {x - x, x - x};
  return sincos_far(x, lower);
}

}  // namespace ORV_TAG
}  // namespace orv
