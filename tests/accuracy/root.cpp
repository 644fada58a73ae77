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

}  // namespace

std::vector<Function> root_functions() {
  return {
      {"sd", "Hypot", Approximate, binary<mpfr_hypot>, nullptr, ORV_INPUTS(hypot_inputs)},
      {"sd", "Sqrt", Rounded, unary<mpfr_sqrt>, ::sqrt, ORV_INPUTS(root_inputs)},
  };
}

}  // namespace orv_test
