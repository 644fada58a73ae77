// SPDX-License-Identifier: MIT
#include "meter.hpp"

#include <array>

namespace orv_test {
namespace {

template <class R>
constexpr int exponent_of(R x) {
  constexpr int mantissa = std::numeric_limits<R>::digits - 1;
  return static_cast<int>(bits_of(x) >> mantissa) & (Format<R>::exponents - 1);
}

float towards_zero(mpfr_srcptr f, float) { return mpfr_get_flt(f, MPFR_RNDZ); }
double towards_zero(mpfr_srcptr f, double) { return mpfr_get_d(f, MPFR_RNDZ); }

/// Keeps what is next to a half on its side of it.
double rounded_to_odd(mpfr_srcptr x) {
  const double d = mpfr_get_d(x, MPFR_RNDZ);
  return mpfr_cmp_d(x, d) == 0 ? d : from_bits<double>(bits_of(d) | 1);
}

template <class R>
double significand(const Reference<R>& f) {
  return static_cast<double>(std::abs(f.value * per_ulp(f.value))) + std::abs(f.rest);
}

}  // namespace

template <class R>
typename Format<R>::Wide per_ulp(R value) {
  using Wide = typename Format<R>::Wide;
  static const auto table = [] {
    std::array<Wide, Format<R>::exponents> powers;
    for (int e = 0; e < Format<R>::exponents; ++e) {
      constexpr int denormal =  // -log2 of the spacing there
          std::numeric_limits<R>::digits - std::numeric_limits<R>::min_exponent;
      powers[e] = std::ldexp(Wide{1}, denormal - (e > 1 ? e - 1 : 0));
    }
    return powers;
  }();
  return table[exponent_of(value)];
}

template <class R>
Reference<R> reference(mpfr_srcptr f) {
  constexpr R infinity = std::numeric_limits<R>::infinity();
  if (mpfr_nan_p(f)) return {std::numeric_limits<R>::quiet_NaN(), 0};
  if (mpfr_inf_p(f) ||
      (!mpfr_zero_p(f) && mpfr_get_exp(f) > std::numeric_limits<R>::max_exponent)) {
    return {mpfr_signbit(f) ? -infinity : infinity, 0};
  }
  const R value = towards_zero(f, R{});
  MPFR_DECL_INIT(rest, 256);  // exact for the difference
  mpfr_sub_d(rest, f, static_cast<double>(value), MPFR_RNDN);
  mpfr_mul_2si(rest, rest, std::ilogb(per_ulp(value)), MPFR_RNDN);
  return {value, rounded_to_odd(rest)};
}

Reference<float> reference(double f) {
  if (std::isnan(f)) return {std::numeric_limits<float>::quiet_NaN(), 0};
  if (std::abs(f) >= 0x1p128) {
    return {std::copysign(std::numeric_limits<float>::infinity(), static_cast<float>(f)), 0};
  }
  auto value = static_cast<float>(f);
  if (std::abs(static_cast<double>(value)) > std::abs(f)) {
    value = from_bits<float>(bits_of(value) - 1);
  }
  return {value, (f - static_cast<double>(value)) * per_ulp(value)};
}

template <class R>
double ulp_error(R y, const Reference<R>& f) {
  using Wide = typename Format<R>::Wide;
  constexpr double wrong = std::numeric_limits<double>::infinity();
  if (std::isnan(y) || std::isnan(f.value)) return std::isnan(y) && std::isnan(f.value) ? 0 : wrong;
  if (std::isinf(f.value)) return y == f.value ? 0 : wrong;
  if (y == 0 && std::signbit(y) != std::signbit(f.value)) return wrong;
  const Wide scale = per_ulp(f.value);
  Wide distance = y;
  if (std::isinf(y)) {
    distance = std::copysign(std::ldexp(Wide{1}, std::numeric_limits<R>::max_exponent), Wide{y});
  }
  distance = (distance - f.value) * scale - f.rest;
  return static_cast<double>(std::abs(distance));
}

template <class R>
double relative_error(double ulps, const Reference<R>& f) {
  if (ulps == 0) return 0;
  constexpr double smallest_normal = 1 / static_cast<double>(std::numeric_limits<R>::epsilon());
  return ulps / std::fmax(significand(f), smallest_normal);
}

template <class R>
R nearest(const Reference<R>& f) {
  const double rest = std::abs(f.rest);
  const bool away = rest > 0.5 || (rest == 0.5 && (bits_of(f.value) & 1) != 0);
  return away ? from_bits<R>(bits_of(f.value) + 1) : f.value;
}

#define ORV_INSTANTIATE(R)                                     \
  template typename Format<R>::Wide per_ulp(R);                \
  template Reference<R> reference<R>(mpfr_srcptr);             \
  template double ulp_error(R, const Reference<R>&);           \
  template double relative_error(double, const Reference<R>&); \
  template R nearest(const Reference<R>&);
ORV_INSTANTIATE(float)
ORV_INSTANTIATE(double)
#undef ORV_INSTANTIATE

}  // namespace orv_test
