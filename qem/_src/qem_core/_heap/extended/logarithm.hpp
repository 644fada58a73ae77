// Logarithms of extended numbers, in two parts for those who multiply them.
//
// x = 2^e m, and m times a short reciprocal of the interval it lies in is 1 + r, exactly so when r
// has two parts. ln(1 + r) comes from its series: the square's upper half is exact, the cube and on
// fit a double.
#pragma once

#include <orv/qem.h>

#include "format.hpp"

namespace orv {
inline namespace ORV_TAG {

/// ln(1 + r) where |r| is below 2^-7, and |lower| below an ulp of r. With `exact` the second part
/// is good for itself, not just to round the sum.
template <bool exact>
[[gnu::always_inline]] inline TwoParts<Extended> log1p_in_parts(Extended r, Extended lower) {
  constexpr double third = 0x1.5555555555555p-2, fifth = 0x1.999999999999Ap-3,
                   sixth = 0x1.5555555555555p-3, seventh = 0x1.2492492492492p-3,
                   ninth = 0x1.C71C71C71C71Cp-4;
  const double t = static_cast<double>(r), v = t * t;
  // Products of its own powers would underflow where r itself is far from it.
  const Extended cubic =
      r * (v * ((third - t * 0.25) +
                v * ((fifth - t * sixth) + v * ((seventh - t * 0.125) + v * (ninth - t * 0.1)))));
  if (!exact) return {r, lower - (0.5L * (r * r) - cubic)};
  const Halves<Extended> half(r);
  const TwoParts<Extended> sum = exact_sum_ordered(r, -0.5L * (half.hi * half.hi));
  const Extended square = half.lo * (half.hi + 0.5L * half.lo);
  return {sum.hi, sum.lo + (lower * (1 - r) + (cubic - square))};
}

inline constexpr double no_row[2] = {0, 0};

/// ln x, x positive and finite; `lower` is a second part of x.
template <bool exact = false>
[[gnu::always_inline]] inline TwoParts<Extended> log_in_parts(Extended x, Extended lower = 0) {
  constexpr double ln2_hi = 0x1.62E42FEFA39Ep-1;  // 48 bits, as the table's
  constexpr Extended ln2_lo = 0x1.E6AF278ECE600FCCp-50L;
  int exponent = 0;
  if (__builtin_expect(!(x > 0x1p-1000L && x < 0x1p1000L), false)) {
    exponent = exponent_field(x) - extended_bias;
    if (exponent == -extended_bias) exponent -= __builtin_clzll(significand_of(x)) - 1;
    x = scaled(x, -exponent), lower = scaled(lower, -exponent);
  }
  // The upper half of each binade counts with the next one, so that nothing cancels around 1.
  const double near = static_cast<double>(x);
  const uint32_t high = Format<double>::high_word(near);
  const int interval = static_cast<int>(high >> 12) & 255, upper = interval >> 7;
  const int own = static_cast<int>(high >> 20) - 1023 + upper;
  const double scale = double_power_of_two(-own);
  const Extended m = x * scale;
  const double m_hi = first_32_bits(near) * scale;
  exponent += own;

  const bool near_one = interval == 0 || interval == 255;
  const double c = near_one ? 1.0 : orv_qem_core_double_rcp_table_256[interval] * (1 << upper);
  const double first = m_hi * c - 1;
  const Extended second = (m - m_hi) * c, second_lower = lower * (scale * c);
  const TwoParts<Extended> r =
      exact ? exact_sum_ordered<Extended>(first, second) : TwoParts<Extended>{first + second, 0};
  const TwoParts<Extended> log1p = log1p_in_parts<exact>(r.hi, r.lo + second_lower);
  if (near_one && exponent == 0) return log1p;

  const double* row = near_one ? no_row : orv_qem_core_logl_table_256[interval];
  const double k = near_one ? exponent : exponent - upper;
  const Extended whole = k * Extended{ln2_hi} + row[0], rest = log1p.lo + (k * ln2_lo + row[1]);
  if (!exact) return {whole, log1p.hi + rest};
  const TwoParts<Extended> sum = exact_sum_ordered(whole, log1p.hi);
  return {sum.hi, sum.lo + rest};
}

inline Extended log_of(Extended x) {
  if (!(x > 0)) return x == 0 ? -1 / (x * x) : (x - x) / 0.0L;
  if (is_infinite(x)) return x;
  const TwoParts<Extended> log = log_in_parts(x);
  return log.hi + log.lo;
}

/// ln(1 + x), of which `lower` is a second part.
inline Extended log1p_of(Extended x, Extended lower = 0) {
  if (x >= -0x1p-8L && x <= 0x1p-8L) {
    if (x == 0) return x;
    const TwoParts<Extended> log = log1p_in_parts<false>(x, lower);
    return log.hi + log.lo;
  }
  if (!(x > -1) || is_infinite(x)) return log_of(1 + x);
  const TwoParts<Extended> sum = exact_sum<Extended>(1, x);
  const TwoParts<Extended> log = log_in_parts(sum.hi, sum.lo + lower);
  return log.hi + log.lo;
}

}  // namespace ORV_TAG
}  // namespace orv
