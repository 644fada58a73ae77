// SPDX-License-Identifier: MIT
// Special values of the vector functions as rows of numbers.
#pragma once

#include <limits>
#include <vector>

#include "harness.hpp"

namespace orv_test {

inline constexpr double inf = std::numeric_limits<double>::infinity();
inline constexpr double nan = std::numeric_limits<double>::quiet_NaN();
/// Stands for the type's largest number, and for its smallest denormal one.
inline constexpr double largest = 1e300, tiny = 1e-300;

struct Row {
  const char* function;
  SpecialValue value;
};

/// Functions of two arguments, of two results, of complex arithmetic; results that must be exact.
const std::vector<Row>& real_rows();

/// Of complex functions (C99, annex G).
const std::vector<Row>& complex_rows();

}  // namespace orv_test
