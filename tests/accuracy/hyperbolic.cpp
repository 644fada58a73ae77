// SPDX-License-Identifier: MIT
// Hyperbolic functions.
#include "families.hpp"

namespace orv_test {
namespace {

template <class R>
void cosh_inputs(Inputs<R>& in) {
  constexpr double ln2 = 0x1.62E42FEFA39EFp-1, half_step = ln2 / 128;
  const double finite = is_float<R> ? 0x1.65A9F8p6 : 0x1.633CE8FB9F87Dp9;
  in.linear(0.2, -finite - 1, finite + 1);
  in.linear(0.2, -22, 22);
  in.linear(0.1, -1, 1);
  in.linear(0.1, -0.05, 0.05);
  in.patterns_of_both_signs(0.2, 0, finite);
  in.seams(0.08, half_step, -finite, finite);
  in.seams(0.08, half_step, -1, 1);
  if (is_float<R>) in.seams(0.08, ln2 / 2, -finite, finite);
  for (const double sign : {-1, 1}) {
    in.at(sign * finite);
    in.seam(sign * (is_float<R> ? 87 : 708));               // lanes end
    in.seam(sign * 0.25);                                   // sinh's polynomial ends
    for (int k = 58; k < 66; ++k) in.seam(sign * k * ln2);  // e^-x is kept from vanishing
  }
}

template <class R>
void tanh_inputs(Inputs<R>& in) {
  in.linear(0.3, -3, 3);
  in.linear(0.1, -22, 22);
  in.linear(0.1, -0.07, 0.07);
  in.patterns_of_both_signs(0.3, 0, 25);
  in.seams(0.08, 0x1.62E42FEFA39EFp-3, -10, 10);  // quarters of ln2, in floats where m changes
  for (double binade = 0x1p-5; binade < 32; binade *= 2) {
    for (int k = 32; k < 64; ++k) in.seam((k % 2 ? -k : k) * binade / 32);  // rows of the tables
  }
  for (const double x : {19.0615, 9.0109, 9.25}) in.seam(x), in.seam(-x);  // 1 from here on
}

}  // namespace

std::vector<Function> hyperbolic_functions() {
  return {
      {"sd", "Cosh", Approximate, unary<mpfr_cosh>, ::cosh, ORV_INPUTS(cosh_inputs)},
      {"sd", "Sinh", Approximate, unary<mpfr_sinh>, ::sinh, ORV_INPUTS(cosh_inputs)},
      {"sd", "Tanh", Approximate, unary<mpfr_tanh>, ::tanh, ORV_INPUTS(tanh_inputs)},
  };
}

}  // namespace orv_test
