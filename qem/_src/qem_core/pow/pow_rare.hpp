// SPDX-License-Identifier: MIT
// The slow path of Pow and Powx: all special cases, and the full range to HA accuracy at every
// level.
#pragma once

#include "../exp/exp.hpp"
#include "../simd/exact.hpp"
#include "pow.hpp"
#include "tables/pow_slow_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

inline uint32_t exponent_bits(double x) { return bits_of(x) >> 52 & 0x7FF; }

enum class Integer { None, Odd, Even };

/// What y is as an exponent. Infinity and NaN are no integers.
inline Integer integer_class(double y) {
  const int exponent = static_cast<int>(exponent_bits(y)) - 1023;
  if (y == 0) return Integer::Even;
  if (exponent < 0 || exponent == 1024) return Integer::None;
  if (exponent > 52) return Integer::Even;
  const int point = 52 - exponent;
  const uint64_t bits = bits_of(y);
  if ((bits & ((uint64_t{1} << point) - 1)) != 0) return Integer::None;
  return (bits >> point & 1) != 0 ? Integer::Odd
                                  : Integer::Even;  // 1's own bit is the exponent's last
}

/// log2 of a positive finite x other than 1 in two parts, to 2^-68 of it: a reciprocal for m's
/// first bits, one for the product's, and one for that product's bring m within 2^-16 of 1.
inline TwoParts<double> log2_rare(double x) {
  int exponent = 0;
  if (x < Format<double>::smallest_normal) x *= 0x1p200, exponent = -200;
  constexpr uint32_t lowest = 0x3FE7C000;  // high word of 0.7421875, half a row below 0.75
  const auto high_word = [](double z) { return static_cast<uint32_t>(bits_of(z) >> 32); };
  const int32_t shift = static_cast<int32_t>(high_word(x) - lowest) >> 20;
  exponent += shift;
  const double m = from_bits(bits_of(x) - (static_cast<uint64_t>(shift) << 52));

  const double* row1 = pow_slow_level1[((high_word(m) & 0xFC000) + 0x4000) >> 15].number;
  const double z1 = m * row1[0];
  const double* row2 = pow_slow_level2[((high_word(z1) & 0xFC00) + 0x400) >> 11].number;
  const double z2 = z1 * row2[0];
  const double* row3 = pow_slow_level3[((high_word(z2) & 0xFF0) + 0x10) >> 5].number;
  const double R = row1[0] * row2[0] * row3[0];  // exact
  const auto product = exact_product(Halves<double>(m), Halves<double>(R));

  const auto r = exact_sum_ordered(product.hi - pow_slow_unit, product.lo);
  const double whole = exponent + row1[1] + row2[1] + row3[1];  // exact
  const auto linear = exact_sum(whole, r.hi);
  const auto all = exact_sum(linear.hi, by_pairs(pow_slow_log, r.hi) * r.hi);
  const double rest = (row1[2] + row2[2] + row3[2]) + (linear.lo + all.lo + r.lo);
  return exact_sum_ordered(all.hi, rest);
}

/// x^y of positive finite x other than 1, finite y other than 0.
inline double pow_positive(double x, double y) {
  const TwoParts<double> log = log2_rare(x);
  const uint32_t exponents = exponent_bits(y) + exponent_bits(log.hi);
  const bool grows = (y < 0) == (log.hi < 0);
  const double largest = opaque(Format<double>::largest);
  const double smallest = opaque(Format<double>::smallest_normal);
  if (exponents >= 2057) return grows ? largest * largest : smallest * smallest;  // from 2^11 on
  if (exponents < 1985) return 1.0 + smallest;                                    // below 2^-61

  auto w = exact_product(Halves<double>(y), Halves<double>(log.hi));
  w.lo += y * log.lo;
  if (w.hi < -1080) return smallest * smallest;
  if (w.hi > 1025) return largest * largest;

  constexpr double shifter = 0x1.8p45;  // leaves 128ths
  const double k = w.hi + shifter;
  const double f = (w.hi - (k - shifter)) + w.lo;
  const auto steps = static_cast<int32_t>(bits_of(k));
  const int m = steps >> 7;
  const Pair<double> t = vdpow_powers[steps & 127];
  const double rest = t.first * (by_pairs(vdpow_ha_exp, f) * f) + t.second;
  return scaled_sum(t.first, rest, m);
}

/// The kernels report two cases of all, both as a domain error. Overflow and underflow are silent.
inline int pow_rare(double x, double y, double& r) {
  r = 1.0;
  if (x == 1 || y == 0) {
    opaque(x + y);  // signals a signalling NaN
    return QEM_STATUS_OK;
  }
  if (x != x || y != y) {
    r = x + y;
    return QEM_STATUS_OK;
  }

  const Integer integer = integer_class(y);
  const double sign = integer == Integer::Odd && __builtin_signbit(x) ? -1.0 : 1.0;
  const double size = __builtin_fabs(x), zero = opaque(0.0);
  if (x == 0) {
    r = y > 0 ? sign * zero : sign / zero;
    return y > 0 ? QEM_STATUS_OK : QEM_STATUS_DOMAIN;
  }
  const bool finite_y = exponent_bits(y) != 0x7FF;
  if (x == -1 && (integer != Integer::None || !finite_y)) {
    r = sign;
  } else if (size <= Format<double>::largest && finite_y) {
    if (x < 0 && integer == Integer::None) {
      r = zero / zero;
      return QEM_STATUS_DOMAIN;
    }
    r = sign * pow_positive(size, y);
  } else if (size >= 1) {
    r = y > 0 ? sign * Format<double>::infinity : sign * zero;
  } else {
    r = y > 0 ? 0.0 : Format<double>::infinity;
  }
  return QEM_STATUS_OK;
}

}  // namespace ORV_TAG
}  // namespace orv
