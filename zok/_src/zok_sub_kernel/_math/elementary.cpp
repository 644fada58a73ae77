// SPDX-License-Identifier: MIT
// Logarithm, square root and floor of one number, without a mathematics library.
#include <immintrin.h>
#include <orv/scalar.h>
#include <stdint.h>

#include <bit>

#include "tables/scalar_ln_table.hpp"

namespace orv {
namespace {

/// A double cut to 32 significant bits.
double first_32_bits(double x) {
  return std::bit_cast<double>(std::bit_cast<uint64_t>(x) & ~uint64_t{0x1FFFFF});
}

/// x = 2^e m, and m times the short reciprocal of its row is 1 + f. The upper half of a row's
/// interval around 2 counts with the next binade, so that nothing cancels around 1.
double ln(double x) {
  constexpr uint64_t half_row = uint64_t{1} << 44;
  constexpr double least_normal = 0x1p-1022;
  if (x == 0) return -__builtin_inf();
  if (x < 0) return __builtin_nan("");
  if (!(x < __builtin_inf())) return x + x;

  int exponent = -1023;
  if (x < least_normal) x *= 0x1p52, exponent -= 52;
  const auto bits = std::bit_cast<uint64_t>(x), rounded = bits + half_row;
  const auto field = static_cast<int>(rounded >> 52);
  const LnRow& row = scalar_ln_table[rounded >> 45 & 127];
  const auto m = std::bit_cast<double>(bits - (static_cast<uint64_t>(field - 1023) << 52));
  exponent += field;

  const double m_hi = first_32_bits(m);
  const double f_hi = m_hi * row.reciprocal - 1, f_lo = (m - m_hi) * row.reciprocal;
  const double f = f_hi + f_lo, f_rest = (f_hi - f) + f_lo;
  const double* c = scalar_ln_series;
  const double square = f * f;
  const double cubic = square * f * ((c[0] + f * c[1]) + square * (c[2] + f * (c[3] + f * c[4])));

  const double whole = exponent * ln2_hi + row.ln_hi;  // exact, and 0 or the larger one
  const double sum = whole + f, sum_rest = (whole - sum) + f;
  const double rest = f_rest + (exponent * ln2_lo + row.ln_lo);
  return sum + (sum_rest + (rest + (cubic - 0.5 * square)));
}

}  // namespace
}  // namespace orv

double __zokdLn(double x) { return orv::ln(x); }

float __zoksLn(float x) { return static_cast<float>(orv::ln(x)); }

double __zokdSqrt(double x) { return _mm_cvtsd_f64(_mm_sqrt_sd(_mm_set_sd(x), _mm_set_sd(x))); }

double __zokdFloor(double x) { return _mm_cvtsd_f64(_mm_floor_sd(_mm_set_sd(x), _mm_set_sd(x))); }
