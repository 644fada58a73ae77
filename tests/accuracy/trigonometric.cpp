// SPDX-License-Identifier: MIT
#include <cmath>

#include "families.hpp"

namespace orv_test {
namespace {

/// Where lanes end, multiples and halves of a table step, the lower half of the first step beside a
/// zero, whose results have the fewest bits of the table, and doubles next to multiples of pi/2.
template <class R>
void angle_inputs(Inputs<R>& in) {
  constexpr double pi = 0x1.921FB54442D18p1;
  in.linear(0.3, -10, 10);
  in.linear(0.2, -65600, 65600);
  for (const double zero : {0.0, pi / 2, pi}) in.linear(0.1, zero + pi / 512, zero + pi / 384);
  in.patterns_of_both_signs(0.3, 0, std::numeric_limits<R>::infinity());
  in.seams(0.2, pi / 512, -70000, 70000);
  in.seams(0.1, pi / 512, 0, 0x1.001p24);
  in.seams(0.1, pi / 2, 65000, 1e15);
  for (const double x : {65536.0, 0x1p24, pi / 2, pi}) in.at(x, 16);
  for (int exponent = 16; exponent < 1024 && !is_float<R>; ++exponent) {
    for (const double x : {1.0, 0x1.921FB54442D18p0}) in.at(std::ldexp(x, exponent), 1);
  }
  if (is_float<R>) {
    in.linear(0.1, -10000, 10000);
    in.seams(0.2, pi / 4, -10000, 10000);
    // Lanes end; next to multiples of pi/2.
    for (const double x :
         {0x1p20, 10000.0, 252.898206, 2238.384766, 0x1.a3b278p12, 0x1.8b6e58p125}) {
      in.at(x, 16);
    }
  }
  for (const double x : {0x1.6AC5B262CA1FFp849, 0x1.DF77E73A0A3C5p+417, 0x1.921FB54442D18p+100,
                         0x1.2D97C7F3321D2p+2, 22.0, 355.0, 1e22}) {
    if (!is_float<R> || x < 1e38) in.at(x, 4);
  }
}

void sine_and_cosine(mpfr_t* y, mpfr_t* x) { mpfr_sin_cos(y[0], y[1], x[0], MPFR_RNDN); }
void cis(mpfr_t* y, mpfr_t* x) { mpfr_sin_cos(y[1], y[0], x[0], MPFR_RNDN); }

}  // namespace

std::vector<Function> trigonometric_functions() {
  return {
      {"cz", "CIS", Approximate, cis, nullptr, ORV_INPUTS(angle_inputs)},
      {"sd", "Cos", Approximate, unary<mpfr_cos>, ::cos, ORV_INPUTS(angle_inputs)},
      {"sd", "Sin", Approximate, unary<mpfr_sin>, ::sin, ORV_INPUTS(angle_inputs)},
      {"sd", "SinCos", Approximate, sine_and_cosine, nullptr, ORV_INPUTS(angle_inputs)},
      {"sd", "Tan", Approximate, unary<mpfr_tan>, ::tan, ORV_INPUTS(angle_inputs)},
  };
}

}  // namespace orv_test
