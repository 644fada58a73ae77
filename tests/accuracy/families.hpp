// SPDX-License-Identifier: MIT
// The families of functions, and what their references and inputs share.
#pragma once

#include "inputs.hpp"
#include "support/kernels.hpp"

namespace orv_test {

std::vector<Function> arcsine_functions();
std::vector<Function> arctangent_functions();
std::vector<Function> arithmetic_functions();
std::vector<Function> complex_functions();
std::vector<Function> error_functions();
std::vector<Function> exponential_functions();
std::vector<Function> hyperbolic_functions();
std::vector<Function> inverse_error_functions();
std::vector<Function> inverse_hyperbolic_functions();
std::vector<Function> power_functions();
std::vector<Function> root_functions();
std::vector<Function> rounding_functions();
std::vector<Function> trigonometric_functions();

inline constexpr Grade Rounded = Grade::Rounded, Approximate = Grade::Approximate;

template <class R>
constexpr bool is_float = sizeof(R) == sizeof(float);

template <auto mpfr_function>
void unary(mpfr_t* y, mpfr_t* x) {
  mpfr_function(y[0], x[0], MPFR_RNDN);
}
template <auto mpfr_function>
void binary(mpfr_t* y, mpfr_t* x) {
  mpfr_function(y[0], x[0], x[1], MPFR_RNDN);
}

template <class R>
void arithmetic_inputs(Inputs<R>& in) {
  in.patterns_of_both_signs(0.8, 0, std::numeric_limits<R>::infinity());
}

}  // namespace orv_test

/// The input makers of a row.
#define ORV_INPUTS(make) make<float>, make<double>
