// SPDX-License-Identifier: MIT
#include <cmath>

#include "families.hpp"

namespace orv_test {
namespace {

/// The whole domain, both sides of 1/2, where the reduction changes, and the ends, where the result
/// or what it lacks to a right angle goes to 0. An error in the small terms weighs most where they
/// are largest, towards 1/2, and just below a result of 1/2 and of 1.
template <class R>
void arc_inputs(Inputs<R>& in) {
  in.linear(0.2, -1, 1);
  in.patterns_of_both_signs(0.1, 0, 1);
  for (const double sign : {1.0, -1.0}) {
    in.linear(0.2, sign * 0.4, sign * 0.55);
    in.linear(0.05, sign * 0.87, sign * 0.88);  // cos 0.5 = 0.8776
    in.near(0.05, sign * 0.5, 0.1);
    in.near(0.05, sign, 0.5);
    for (const double x : {0.479425538604203, 0.5, 0.5403023058681398, 0.8775825618903728, 1.0}) {
      in.at(sign * x, 16);
    }
  }
}

}  // namespace

std::vector<Function> arcsine_functions() {
  return {
      {"sd", "Acos", Approximate, unary<mpfr_acos>, ::acos, ORV_INPUTS(arc_inputs)},
      {"sd", "Asin", Approximate, unary<mpfr_asin>, ::asin, ORV_INPUTS(arc_inputs)},
  };
}

}  // namespace orv_test
