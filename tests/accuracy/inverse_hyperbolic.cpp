// SPDX-License-Identifier: MIT
// Inverse hyperbolic functions, each of them the logarithm of a y from 1 on.
#include <cmath>

#include "families.hpp"

namespace orv_test {
namespace {

double asinh_argument(double y) { return (y - 1 / y) / 2; }
double acosh_argument(double y) { return (y + 1 / y) / 2; }
double atanh_argument(double y) { return (y - 1) / (y + 1); }

/// Where the table's row and the power of two that is taken off y change; beside y = 1, where the
/// row and the rest cancel, most.
template <class R>
void log_seams(Inputs<R>& in, double (*argument)(double)) {
  for (double at = 512; at <= 1024; at += 0.5) {
    const double y = 1024 / at, scale = std::ldexp(1, static_cast<int>(in.random.below(24)));
    in.seam(argument(y), y < 1.02 ? 200 : 4);
    in.seam(argument(y * scale));
  }
  for (double y = 1.74; y < 0x1p24; y *= 2) in.seam(argument(y), 100);
}

/// Both signs, down to denormals, and the last results in which the rounding of 1 + x shows.
template <class R>
void near_zero(Inputs<R>& in) {
  in.patterns_of_both_signs(0.1, 0, 1);
  in.patterns_of_both_signs(0.2, std::numeric_limits<R>::epsilon() / 16, 0.1);
  in.linear(0.1, -0.02, 0.02);
  for (double x = 0x1p-60; x < 1; x *= 2) in.seam(x, 40), in.seam(-1.5 * x, 40);
}

/// Where the lanes end, and where squares overflow.
template <class R>
void large(Inputs<R>& in) {
  in.patterns_of_both_signs(0.2, 1, std::numeric_limits<R>::infinity());
  for (const double x : {0x1p23, 0x1p26, 0x1p52, 0x1p60, 0x1p64}) in.seam(x, 40);
  if (is_float<R>) return;
  for (const double x : {0x1p500, 0x1p511, 0x1p512, 0x1p1023}) in.seam(x, 40);
}

template <class R>
void asinh_inputs(Inputs<R>& in) {
  near_zero(in);
  large(in);
  in.linear(0.4, -4, 4);
  log_seams(in, asinh_argument);
}

template <class R>
void acosh_inputs(Inputs<R>& in) {
  in.near(0.4, 1, 0.5);
  in.linear(0.1, 1, 1.001);
  in.linear(0.4, 1, 5);
  large(in);
  in.at(1, 64);
  log_seams(in, acosh_argument);
}

/// The power of two changes where the bits of 1 + x and of 1 - x, taken as numbers, are 0.74 of
/// an exponent apart.
template <class R>
void atanh_inputs(Inputs<R>& in) {
  near_zero(in);
  in.linear(0.4, -1, 1);
  for (const double one : {-1, 1}) in.near(0.1, one, 0.5), in.at(one, 64);
  in.seam(1 - 0x1p-20, 100);
  log_seams(in, atanh_argument);
  for (double power = 2; power < 0x1p24; power *= 2) in.seam((power - 1.26) / (power + 1), 100);
}

}  // namespace

std::vector<Function> inverse_hyperbolic_functions() {
  return {
      {"sd", "Acosh", Approximate, unary<mpfr_acosh>, ::acosh, ORV_INPUTS(acosh_inputs)},
      {"sd", "Asinh", Approximate, unary<mpfr_asinh>, ::asinh, ORV_INPUTS(asinh_inputs)},
      {"sd", "Atanh", Approximate, unary<mpfr_atanh>, ::atanh, ORV_INPUTS(atanh_inputs)},
  };
}

}  // namespace orv_test
