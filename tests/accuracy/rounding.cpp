// SPDX-License-Identifier: MIT
// Rounding, and moves of elements.
#include "families.hpp"

namespace orv_test {
namespace {

/// Around whole numbers of all sizes, up to where all are whole.
template <class R>
void whole_inputs(Inputs<R>& in) {
  arithmetic_inputs(in);
  in.patterns_of_both_signs(0.4, 0.01, 4 / std::numeric_limits<R>::epsilon());
  in.seams(0.2, 0.5, -100, 100);
}

/// Exact, so MPFR's rounding does nothing further.
template <auto mpfr_whole>
void whole(mpfr_t* y, mpfr_t* x) {
  mpfr_whole(y[0], x[0]);
}
void to_nearest(mpfr_t* y, mpfr_t* x) { mpfr_rint(y[0], x[0], MPFR_RNDN); }
void modf(mpfr_t* y, mpfr_t* x) { mpfr_modf(y[0], y[1], x[0], MPFR_RNDN); }
void copy(mpfr_t* y, mpfr_t* x) { mpfr_set(y[0], x[0], MPFR_RNDN); }

}  // namespace

std::vector<Function> rounding_functions() {
  return {
      {"sd", "Floor", Rounded, whole<mpfr_floor>, ::floor, ORV_INPUTS(whole_inputs)},
      {"sd", "Ceil", Rounded, whole<mpfr_ceil>, ::ceil, ORV_INPUTS(whole_inputs)},
      {"sd", "Trunc", Rounded, whole<mpfr_trunc>, ::trunc, ORV_INPUTS(whole_inputs)},
      {"sd", "Round", Rounded, whole<mpfr_round>, ::round, ORV_INPUTS(whole_inputs)},
      {"sd", "Rint", Rounded, to_nearest, ::rint, ORV_INPUTS(whole_inputs)},
      {"sd", "NearbyInt", Rounded, to_nearest, ::nearbyint, ORV_INPUTS(whole_inputs)},
      {"sd", "Modf", Rounded, modf, nullptr, ORV_INPUTS(whole_inputs)},
      {"sd", "PackI", Rounded, copy, nullptr, ORV_INPUTS(arithmetic_inputs)},
      {"sd", "PackV", Rounded, copy, nullptr, ORV_INPUTS(arithmetic_inputs)},
      {"sd", "PackM", Rounded, copy, nullptr, ORV_INPUTS(arithmetic_inputs)},
      {"sd", "UnpackI", Rounded, copy, nullptr, ORV_INPUTS(arithmetic_inputs)},
      {"sd", "UnpackV", Rounded, copy, nullptr, ORV_INPUTS(arithmetic_inputs)},
      {"sd", "UnpackM", Rounded, copy, nullptr, ORV_INPUTS(arithmetic_inputs)},
  };
}

}  // namespace orv_test
