// SPDX-License-Identifier: MIT
// Exponentials and logarithms.
#include "families.hpp"

namespace orv_test {
namespace {

constexpr double ln2 = 0x1.62E42FEFA39EFp-1;

/// Multiples of half a reduction step: where the nearest step changes, and where nothing is left.
template <class R>
void exp_steps(Inputs<R>& in, double lo, double hi) {
  for (const double steps : {128.0, 256.0, 2048.0}) in.seams(0.08, ln2 / steps, lo, hi);
}

template <class R>
void exp_inputs(Inputs<R>& in) {
  // The last values below 0: of the normal results, and of the results other than 0.
  const double normal = is_float<R> ? -0x1.5D589Ep6 : -0x1.6232BDD7ABCD2p9;
  const double nonzero = is_float<R> ? -0x1.9FE368p6 : -0x1.74910D52D3051p9;
  const double largest = is_float<R> ? 0x1.62E42Ep6 : 0x1.62E42FEFA39EFp9;
  in.linear(0.3, nonzero - 1, largest + 1);
  in.linear(0.1, nonzero, normal);
  in.linear(0.1, -1, 1);
  in.patterns_of_both_signs(0.2, std::numeric_limits<R>::epsilon() / 8, -nonzero);
  exp_steps(in, nonzero, largest);
  for (const double x : {normal, nonzero, largest}) in.seam(x);
  if (is_float<R>) {
    in.seam(0x1.5D589Ep6);  // lanes end
    in.seam(-0x1.9D1DA0p6);
  } else {
    // High words at which the lanes of a level end, and results that lose all but a few bits.
    for (const double x : {0x1.6232Bp9, 0x1.61266p9, 0x1.5D533p9}) {
      for (const double sign : {-1, 1}) in.at(sign * x), in.seam(sign * (x + 0x1p-11));
    }
    in.at(-0x1.6DDC0F4C6DAF4p9);
    in.near(0.02, 0, 0x1p-53);
  }
}

template <class R>
void expm1_inputs(Inputs<R>& in) {
  const double largest = is_float<R> ? 0x1.62E42Ep6 : 0x1.62E42FEFA39EFp9;
  in.linear(0.2, -50, largest + 1);
  in.linear(0.2, -2, 2);
  in.linear(0.1, -0.05, 0.05);
  in.patterns_of_both_signs(0.3, 0, -2 * ln2 * std::numeric_limits<R>::min_exponent);
  exp_steps(in, -45, largest);
  exp_steps(in, -0.1, 0.1);
  for (const double x : {largest, is_float<R> ? 0x1.5A92D6p6 : 0x1.61DA04CBAFE44p9, 54 * -ln2,
                         55 * -ln2, 25 * -ln2, 26 * -ln2}) {
    in.seam(x);
  }
}

/// Arguments whose reciprocal, in units of a logarithm's table, is a whole number or lies between
/// two: those of ln(x + shift). Beside 1 the table's entry and the rest cancel, so most are there.
template <class R>
void log_seams(Inputs<R>& in, double shift) {
  for (const int entries : {256, 512, 1024}) {
    for (double at = entries / 2; at <= entries; at += 0.5) {
      const double x = entries / at;
      for (const double scale : {0.5, 1.0, static_cast<double>(1u << in.random.below(31))}) {
        const bool cancels = std::abs(x * scale - 1) < 8.0 / entries;
        in.seam(x * scale - shift, cancels ? 400 : 4);
      }
    }
  }
}

template <class R>
void log_inputs(Inputs<R>& in) {
  in.patterns(0.25, 0, std::numeric_limits<R>::infinity());
  in.linear(0.25, 0.5, 2);
  in.linear(0.05, 0.98, 1.02);
  in.near(0.2, 1, 0.5);
  in.patterns_of_both_signs(0.02, 0, std::numeric_limits<R>::infinity());
  log_seams(in, 0);
  for (int k = 64; k < 128; ++k) {  // the slow path's table, by way of denormals
    in.seam((k + 0.5) / 64 * std::numeric_limits<R>::min() / 64);
  }
  for (double x = 2.0 / 3; x < std::numeric_limits<R>::max() / 2; x *= 2)
    in.seam(x), in.seam(1 / x);
  for (const double x : {1.0, 0.990234375, 1.009765625}) in.at(x, 64);
}

template <class R>
void log10_inputs(Inputs<R>& in) {
  log_inputs(in);
  for (double x = 1; x < std::numeric_limits<R>::max() / 10; x *= 10) in.at(x), in.at(1 / x);
}

template <class R>
void log1p_inputs(Inputs<R>& in) {
  constexpr double epsilon = std::numeric_limits<R>::epsilon();
  in.patterns_of_both_signs(0.2, 0, std::numeric_limits<R>::infinity());
  in.patterns_of_both_signs(0.2, epsilon / 16, 1);
  in.linear(0.2, -1, 1);
  in.linear(0.1, -0.02, 0.02);
  in.near(0.1, -1, 0.5);
  log_seams(in, 1);
  for (const double x :
       {-1.0, -0.5, -0.25, 1.0 / 3, -1.0 / 3, epsilon, epsilon / 2, epsilon / 4, -epsilon / 2,
        -epsilon / 4, is_float<R> ? 0x1.FFFFFEp117 : 0x1.FFFFFFFFFF000p1012}) {
    in.at(x, 16);
  }
}

}  // namespace

std::vector<Function> exponential_functions() {
  return {
      {"sd", "Exp", Approximate, unary<mpfr_exp>, ::exp, ORV_INPUTS(exp_inputs)},
      {"sd", "Expm1", Approximate, unary<mpfr_expm1>, ::expm1, ORV_INPUTS(expm1_inputs)},
      {"sd", "Ln", Approximate, unary<mpfr_log>, ::log, ORV_INPUTS(log_inputs)},
      {"sd", "Log10", Approximate, unary<mpfr_log10>, ::log10, ORV_INPUTS(log10_inputs)},
      {"sd", "Log1p", Approximate, unary<mpfr_log1p>, ::log1p, ORV_INPUTS(log1p_inputs)},
  };
}

}  // namespace orv_test
