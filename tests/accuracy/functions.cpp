// SPDX-License-Identifier: MIT
#include "families.hpp"

namespace orv_test {

const std::vector<Function>& functions() {
  static const auto list = [] {
    std::vector<Function> all;
    for (const auto family :
         {arcsine_functions, arctangent_functions, arithmetic_functions, complex_functions,
          error_functions, exponential_functions, hyperbolic_functions, inverse_error_functions,
          inverse_hyperbolic_functions, power_functions, root_functions, rounding_functions,
          trigonometric_functions}) {
      for (Function& f : family()) all.push_back(std::move(f));
    }
    return all;
  }();
  return list;
}

const Function* find_function(char type, const std::string& name) {
  for (const Function& f : functions()) {
    if (f.name == name && f.types.find(type) != std::string::npos) return &f;
  }
  return nullptr;
}

}  // namespace orv_test
