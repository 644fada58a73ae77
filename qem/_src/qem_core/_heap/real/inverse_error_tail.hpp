// SPDX-License-Identifier: MIT
// ErfcInv and CdfNormInv of single elements, whatever their value.
//
// With w = 1 - |d|, see inverse_error.hpp, and s = sqrt(-ln w) the function is s times a smooth
// function of s, a polynomial for each quarter of the binades of s, but an odd series in d near its
// zero. The logarithm, the root and the leading terms are in two parts.
#pragma once

#include "../../simd/exact.hpp"
#include "../../simd/polynomial.hpp"
#include "inverse_error.hpp"
#include "tables/inverse_error_log_table.hpp"

namespace orv {
inline namespace ORV_TAG {

/// A number as it is, or as 2^shift times what it stands for.
struct Scaled {
  double x;
  int shift;
};
/// A positive number as a normal one, also where denormals count as zeros.
inline Scaled normalised(double x) {
  if (bits_of(x) >= bits_of(Format<double>::smallest_normal)) return {x, 0};
  return {from_bits(bits_of(x) | bits_of(1.0)) - 1.0, 1022};
}

/// -ln w, w = 2^-shift x below 15/16.
inline TwoParts<double> minus_log(const Scaled& w) {
  // (ln(1 + r) - r)/r^2; r is up to 1/450, so ln(1 + r) lacks less than 2^-73
  static constexpr double series[] = {-1 / 2.0, 1 / 3.0, -1 / 4.0, 1 / 5.0, -1 / 6.0, 1 / 7.0};
  static constexpr double ln2_high = 0x1.62E42FEFA4p-1;  // 40 bits behind the point
  static constexpr double ln2_low = -0x1.8432A1B0E2634p-43;
  const uint64_t bits = bits_of(w.x);
  const LogRecord& record = _RT[bits >> 44 & 0xFF];
  const double m = from_bits((bits & 0x000FFFFFFFFFFFFF) | bits_of(1.0));
  const int exponent = static_cast<int>(bits >> 52) - 1023 - w.shift;

  const double m_high = upper_half(m), R = record.reciprocal;
  const double r_high = m_high * R - 1.0, r_low = (m - m_high) * R;  // exact
  const double r = r_high + r_low;
  const double high = exponent * ln2_high + record.high;  // exact
  const double low = exponent * ln2_low + record.low;
  const TwoParts<double> sum = exact_sum(high, r_high);
  return exact_sum_ordered(-sum.hi, -(sum.lo + (r_low + (r * r * horner(series, r) + low))));
}

/// The result's first part is short.
inline TwoParts<double> root(const TwoParts<double>& x) {
  const double whole = __builtin_sqrt(x.hi), high = upper_half(whole);
  return {high, ((x.hi - high * high) + x.lo) / (whole + high)};
}

/// x (c[0] + c[1] + c[2] r + c[3] r^2 + ...), where c[0] is short and x too, in its first part.
template <int n>
double times_polynomial(const TwoParts<double>& x, const double (&c)[n], double r) {
  double rest = c[n - 1];
  for (int k = n - 2; k >= 2; --k) rest = rest * r + c[k];
  rest = rest * r + c[1];
  return c[0] * x.hi + (c[0] * x.lo + rest * (x.hi + x.lo));
}

/// The function's magnitude at w below 15/16.
template <class Function>
double far_from_zero(const Scaled& w) {
  const TwoParts<double> s = root(minus_log(w));
  const uint64_t bits = bits_of(s.hi + s.lo);
  // The row's number, and its middle, by exponent and first two bits of s, from 1/4 on.
  constexpr uint64_t first = __builtin_bit_cast(uint64_t, 0.25), half_row = uint64_t{1} << 49;
  const uint64_t i = (bits - first) >> 50;
  const double middle = from_bits((bits >> 50 << 50) + half_row);
  return times_polynomial(s, Function::rows[i], (s.hi - middle) + s.lo);
}

/// The function where |d| is at most within_series.
inline constexpr double within_series = 1 / 16.0;
template <class Function>
double near_zero(double d) {
  const double high = upper_half(d);
  return times_polynomial({high, d - high}, Function::near, d * d);
}

/// A positive number as a double, also where denormals count as zeros.
inline double widened(double x) { return x; }
inline double widened(float x) {
  return x < Format<float>::smallest_normal ? static_cast<int>(bits_of(x)) * 0x1p-149 : x;
}

/// What a scalar entry gives: x in (0, end) by `inside`, but 0 in the middle, poles at both ends
/// and elsewhere nothing. `sign_at_0` is 1 where the function is negative at 0.
template <class T, class Table, class Inside>
int inverse_error_element(const T* px, T* py, T end, int sign_at_0, const Table& table,
                          Inside inside) {
  using Bits = typename Format<T>::Bits;
  const T x = *px;
  const Bits bits = bits_of(x), magnitude = bits << 1 >> 1;
  if (bits - 1 < bits_of(end) - 1) {
    *py = bits == bits_of(end / 2) ? table.zero[0] : static_cast<T>(inside(widened(x)));
    return QEM_STATUS_OK;
  }
  if (magnitude == 0 || bits == bits_of(end)) {
    *py = table.one[magnitude == 0 ? sign_at_0 : 1 - sign_at_0] / opaque(table.zero[0]);
    return QEM_STATUS_SINGULARITY;
  }
  if (magnitude <= bits_of(Format<T>::infinity)) {
    *py = table.infinity[0] * opaque(table.zero[0]);
    return QEM_STATUS_DOMAIN;
  }
  *py = x * x;
  return QEM_STATUS_OK;
}

}  // namespace ORV_TAG
}  // namespace orv
