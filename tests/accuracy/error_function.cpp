// SPDX-License-Identifier: MIT
// The error function and the tails of the normal distribution.
#include <cmath>

#include "families.hpp"

namespace orv_test {
namespace {

/// Where the nearest row of a table changes, up to where the result is 1; below the lanes.
template <class R>
void erf_inputs(Inputs<R>& in) {
  in.linear(0.4, -6.5, 6.5);
  in.linear(0.2, -0.25, 0.25);
  in.patterns_of_both_signs(0.3, 0, std::numeric_limits<R>::infinity());
  in.patterns_of_both_signs(0.2, 0x1p-10, 8);
  for (const double steps : {16.0, 32.0, 64.0}) in.seams(1, 0.5 / steps, -6, 6);
  for (const double x : {0x1p-100, 3.9192059040069580078125, 5.921587195794507})
    in.seam(x), in.seam(-x);
}

/// Tails e^(-rate x^2) f(x) whose table has equal parts of the numbers from each power of two to
/// the next, in x + 1 and half of the first part.
template <class R>
void tail_inputs(Inputs<R>& in, double rate, double direction, double end) {
  constexpr double step = 0x1.62E42FEFA39EFp-7;  // ln2/64
  in.linear(0.4, -6, 6);
  in.linear(0.2, direction * end, 0);
  in.linear(0.1, -0.05, 0.05);
  in.patterns_of_both_signs(0.2, 0, std::numeric_limits<R>::infinity());
  in.patterns_of_both_signs(0.1, 0x1p-30, 40);
  for (const double parts : {16.0, 32.0}) {
    for (double low = 1; low < end; low *= 2) {
      for (double j = 0; j < parts; ++j) {
        const double x = low * (1 + j / parts) - 1 - 0.5 / parts;
        in.seam(x), in.seam(-x);
      }
    }
  }
  for (int i = 0; i < 3000; ++i) {  // the nearest step of the exponential changes
    const double steps = static_cast<double>(in.random.below(8192)) * 8 + 0.5;
    in.at(direction * std::sqrt(steps * step / rate));
  }
}

template <class R>
void erfc_inputs(Inputs<R>& in) {
  tail_inputs(in, 1, 1, is_float<R> ? 10.1 : 27.3);
  // Lanes end; results become denormal, zero and 2.
  for (const double x : {0x1.A8B12p4, 0x1.2639Bp3, 0x1.A8B12FC6E4892p4, 9.194549, 10.0541949,
                         0x1.B39DC41E48BFCp4, -5.8635847487551676, -3.8325068950653076}) {
    in.seam(x);
  }
}

template <class R>
void cdfnorm_inputs(Inputs<R>& in) {
  tail_inputs(in, 0.5, -1, is_float<R> ? 14.2 : 38.5);
  for (const double x : {-0x1.2C27Bp5, -0x1.9E660p3, -0x1.2C27B05BF1A0Bp5, -12.9499527, -14.1701855,
                         -0x1.33E21DC3F3BD7p5, 8.292361075813595, 5.4199883937835693, 37.6, 13.0}) {
    in.seam(x);
  }
}

/// From 8 on by the asymptotic series, which is as good as e^(-x^2) there and faster.
void erfc_of(mpfr_ptr sum, mpfr_srcptr x) {
  if (mpfr_cmp_ui(x, 8) < 0 || mpfr_inf_p(x)) {
    mpfr_erfc(sum, x, MPFR_RNDN);
    return;
  }
  MPFR_DECL_INIT(square, reference_bits<double>);
  MPFR_DECL_INIT(term, reference_bits<double>);
  mpfr_sqr(square, x, MPFR_RNDN);
  mpfr_neg(term, square, MPFR_RNDN);
  mpfr_exp(term, term, MPFR_RNDN);
  mpfr_div(term, term, x, MPFR_RNDN);
  mpfr_set(sum, term, MPFR_RNDN);
  for (int k = 1; k < 128; k += 2) {
    mpfr_mul_si(term, term, -k, MPFR_RNDN);
    mpfr_div(term, term, square, MPFR_RNDN);
    mpfr_div_2ui(term, term, 1, MPFR_RNDN);
    mpfr_add(sum, sum, term, MPFR_RNDN);
  }
  mpfr_const_pi(term, MPFR_RNDN);
  mpfr_sqrt(term, term, MPFR_RNDN);
  mpfr_div(sum, sum, term, MPFR_RNDN);
}
void erfc(mpfr_t* y, mpfr_t* x) { erfc_of(y[0], x[0]); }

void cdfnorm(mpfr_t* y, mpfr_t* x) {
  MPFR_DECL_INIT(z, reference_bits<double>);
  mpfr_sqrt_ui(z, 2, MPFR_RNDN);
  mpfr_div(z, x[0], z, MPFR_RNDN);
  mpfr_neg(z, z, MPFR_RNDN);
  erfc_of(y[0], z);
  mpfr_div_2ui(y[0], y[0], 1, MPFR_RNDN);
}

double erfc_in_double(double x) { return static_cast<double>(erfcl(x)); }
double cdfnorm_in_double(double x) { return static_cast<double>(erfcl(-x / sqrtl(2)) / 2); }

}  // namespace

std::vector<Function> error_functions() {
  return {
      {"sd", "CdfNorm", Approximate, cdfnorm, cdfnorm_in_double, ORV_INPUTS(cdfnorm_inputs)},
      {"sd", "Erfc", Approximate, erfc, erfc_in_double, ORV_INPUTS(erfc_inputs)},
      {"sd", "Erf", Approximate, unary<mpfr_erf>, ::erf, ORV_INPUTS(erf_inputs)},
  };
}

}  // namespace orv_test
