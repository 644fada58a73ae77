// SPDX-License-Identifier: MIT
// Roots, and powers made of them.
#include "families.hpp"

namespace orv_test {
namespace {

/// All exponents of either parity, and squares of short numbers with their neighbours, whose roots
/// come closest to a number of the format.
template <class R>
void root_inputs(Inputs<R>& in) {
  in.patterns(0.6, 0, std::numeric_limits<R>::infinity());
  in.linear(0.2, 0.5, 4);
  in.patterns_of_both_signs(0.02, 0, std::numeric_limits<R>::infinity());
  for (int i = 0; i < 500; ++i) {
    const auto root = static_cast<double>(in.random.below(1 << std::numeric_limits<R>::digits / 2));
    in.at(root * root, 2);
  }
}

/// Pairs of like magnitudes, and of denormals; where the lanes end and where the scale changes.
template <class R>
void hypot_inputs(Inputs<R>& in) {
  constexpr R smallest = std::numeric_limits<R>::min(), largest = std::numeric_limits<R>::max();
  in.patterns_of_both_signs(0.4, 0x1p-20, 0x1p20);
  in.patterns_of_both_signs(0.2, 0x1p-70, 0x1p70);
  in.patterns_of_both_signs(0.2, largest / 8, largest);
  in.patterns_of_both_signs(0.4, 0, 8 * smallest);
  for (const double x : {0x1p62, 0x1p-62}) in.seam(x, 200), in.seam(-x, 200);
  for (const double x : {0x1p23, 0x1p24, 0x1p25}) in.seam(x * smallest);
}

/// Where the nearest row of a table changes, for each remainder of the exponent by 3, and the rows'
/// middles; cubes, and denormals; where x^(2/3) is a power of two.
template <class R>
void cube_root_inputs(Inputs<R>& in) {
  using Limits = std::numeric_limits<R>;
  in.patterns_of_both_signs(0.6, 0, Limits::infinity());
  in.linear(0.4, -8, 8);
  for (int i = 0; i < 3 * 64; ++i) {
    const double x = std::ldexp(1 + i % 64 / 64.0, i / 64);
    const int third = static_cast<int>(in.random.below(40)) - 20;
    for (const double scale : {1.0, -std::ldexp(1, 3 * third)}) in.seam(scale * x, 20);
    in.seam(x * Limits::min() / 64);
  }
  for (double x = 1; x < 100; ++x) in.at(x * x * x), in.at(-1 / (x * x * x));
  for (double x = 0x1.6A09E667F3BCDp-59; x < 0x1p60; x *= 8) in.seam(x, 100);
}

void pow2o3(mpfr_t* y, mpfr_t* x) {
  mpfr_cbrt(y[0], x[0], MPFR_RNDN);
  mpfr_sqr(y[0], y[0], MPFR_RNDN);
}
void invcbrt(mpfr_t* y, mpfr_t* x) {
  mpfr_cbrt(y[0], x[0], MPFR_RNDN);
  mpfr_ui_div(y[0], 1, y[0], MPFR_RNDN);
}

// Of cubes the C library's root in double is not exact.
double cbrt_in_double(double x) { return static_cast<double>(cbrtl(x)); }
double pow2o3_in_double(double x) { return static_cast<double>(cbrtl(x) * cbrtl(x)); }
double invcbrt_in_double(double x) { return static_cast<double>(1 / cbrtl(x)); }

/// The sign of an infinity is that of zero.
void inverse_root(mpfr_t* y, mpfr_t* x) {
  mpfr_rec_sqrt(y[0], x[0], MPFR_RNDN);
  if (mpfr_zero_p(x[0])) mpfr_copysign(y[0], y[0], x[0], MPFR_RNDN);
}
/// Negative zero is its own power.
void power_3o2(mpfr_t* y, mpfr_t* x) {
  mpfr_pow_ui(y[0], x[0], 3, MPFR_RNDN);
  mpfr_sqrt(y[0], y[0], MPFR_RNDN);
}
double inverse_root_in_double(double x) { return 1 / sqrt(x); }
double power_3o2_in_double(double x) { return x == 0 ? x : x * sqrt(x); }

/// Where the lanes end, and where powers become denormal, zero and infinite.
template <class R>
void scaled_root_inputs(Inputs<R>& in) {
  using List = std::vector<double>;
  const List seams =
      is_float<R>
          ? List{0x1p-100, 0x1p-99, 0x1.965FEAp-100, 0x1p-84, 0x1p-60, 0x1p84, 0x1.428A2Ep85}
          : List{0x1p-960, 0x1p-717, 0x1.428A2F98D728Bp-717, 0x1.965FEA53D6E3Dp-682,
                 0x1p-600, 0x1p680,  0x1.965FEA53D6E3Dp682};
  root_inputs(in);
  for (const double x : seams) in.seam(x, 200);
  const double zero = is_float<R> ? 0x1p-100 : 0x1p-717, normal = is_float<R> ? 0x1p-84 : 0x1p-681;
  in.patterns(0.2, zero, normal);
}

}  // namespace

std::vector<Function> root_functions() {
  return {
      {"sd", "Hypot", Approximate, binary<mpfr_hypot>, nullptr, ORV_INPUTS(hypot_inputs)},
      {"sd", "InvSqrt", Approximate, inverse_root, inverse_root_in_double,
       ORV_INPUTS(scaled_root_inputs)},
      {"sd", "Pow3o2", Approximate, power_3o2, power_3o2_in_double, ORV_INPUTS(scaled_root_inputs)},
      {"sd", "Sqrt", Rounded, unary<mpfr_sqrt>, ::sqrt, ORV_INPUTS(root_inputs)},
      {"sd", "Cbrt", Approximate, unary<mpfr_cbrt>, cbrt_in_double, ORV_INPUTS(cube_root_inputs)},
      {"sd", "InvCbrt", Approximate, invcbrt, invcbrt_in_double, ORV_INPUTS(cube_root_inputs)},
      {"sd", "Pow2o3", Approximate, pow2o3, pow2o3_in_double, ORV_INPUTS(cube_root_inputs)},
  };
}

}  // namespace orv_test
