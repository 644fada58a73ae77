// SPDX-License-Identifier: MIT
// What each function is timed beside, and on which arguments.
#pragma once

#include <string>
#include <vector>

#include "support/kernels.hpp"

namespace orv_bench {

/// One implementation of a function.
struct Contender {
  std::string who;  // "sleef_u10"
  orv_call::Kernel call;
};

struct Range {
  double low, high;
};

struct Function {
  char type;         // s, d, c, z
  std::string name;  // "Exp"
  double low, high;  // arguments are drawn evenly from here
  /// The first is the scalar C library or a plain loop: what all others are checked against.
  std::vector<Contender> peers;
  std::vector<Range> further = {};  // arguments that take other ways, in calls of 1000
};

std::vector<Function> complex_functions();

/// Null if there is no row for the function.
const Function* find_function(char type, const std::string& name);

}  // namespace orv_bench
