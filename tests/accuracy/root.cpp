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

}  // namespace

std::vector<Function> root_functions() {
  return {
      {"sd", "Sqrt", Rounded, unary<mpfr_sqrt>, ::sqrt, ORV_INPUTS(root_inputs)},
  };
}

}  // namespace orv_test
