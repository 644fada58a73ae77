// SPDX-License-Identifier: MIT
// The accuracy meter: how far a result is from the true value, in units in the last place (ulp) of
// the result's format at the true value, with no rounding of the true value in between.
#pragma once

#include <mpfr.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace orv_test {

template <class R>
struct Format;

/// Wide holds any value of the format divided by any of its ulps; the exhaustive runs want it fast.
template <>
struct Format<float> {
  using Bits = uint32_t;
  using Wide = double;
  static constexpr int exponents = 256;
};
template <>
struct Format<double> {
  using Bits = uint64_t;
  using Wide = long double;
  static constexpr int exponents = 2048;
};

template <class R>
typename Format<R>::Bits bits_of(R x) {
  return std::bit_cast<typename Format<R>::Bits>(x);
}
/// Always inline: a function's result would pass the x87 unit in 32-bit code, which changes a NaN.
template <class R>
[[gnu::always_inline]] inline R from_bits(typename Format<R>::Bits bits) {
  return std::bit_cast<R>(bits);
}

/// The true value: `value`, which is the format's number next to it towards zero, plus `rest` ulp.
/// Infinite where its magnitude is past every exponent of the format.
template <class R>
struct Reference {
  R value;
  double rest;
};

/// Bits of a true value: 64 more than the result has.
template <class R>
inline constexpr mpfr_prec_t reference_bits = std::numeric_limits<R>::digits + 64;

template <class R>
Reference<R> reference(mpfr_srcptr f);

/// For results in float, whose ulp is 2^29 of double's: there a double is as good as the truth.
Reference<float> reference(double f);

/// 1/ulp at a number of the format; below the normal range the spacing stays.
template <class R>
typename Format<R>::Wide per_ulp(R value);

/// Distance of y from the true value in ulp. Infinite if only one of them is NaN, if an infinity
/// stands for a value in range or the other way round, or if a zero has the wrong sign. An infinity
/// just past the largest number counts as the power of two that comes next.
template <class R>
double ulp_error(R y, const Reference<R>& f);

/// The same distance as a part of the true value; below the normal range, of the smallest normal.
template <class R>
double relative_error(double ulps, const Reference<R>& f);

/// The true value rounded once, ties to even.
template <class R>
R nearest(const Reference<R>& f);

}  // namespace orv_test
