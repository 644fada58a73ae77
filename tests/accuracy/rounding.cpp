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

void modf(mpfr_t* y, mpfr_t* x) { mpfr_modf(y[0], y[1], x[0], MPFR_RNDN); }
void copy(mpfr_t* y, mpfr_t* x) { mpfr_set(y[0], x[0], MPFR_RNDN); }

}  // namespace

std::vector<Function> rounding_functions() {
  return {
      {"sd", "Modf", Rounded, modf, nullptr, ORV_INPUTS(whole_inputs)},
      {"sd", "PackI", Rounded, copy, nullptr, ORV_INPUTS(arithmetic_inputs)},
      {"sd", "UnpackI", Rounded, copy, nullptr, ORV_INPUTS(arithmetic_inputs)},
  };
}

}  // namespace orv_test
