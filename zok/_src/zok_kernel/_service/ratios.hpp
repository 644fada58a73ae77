// SPDX-License-Identifier: MIT
// Ratios whose divisor is a power or a root of a product. They are formed in doubles for floats
// too, and step by step where the product alone leaves the range.
#pragma once

#include <float.h>
#include <math.h>

namespace orv {
inline namespace ORV_TAG {

inline bool in_range(double product) { return product >= DBL_MIN && product <= DBL_MAX; }

inline double root_of_product(double x, double y) {
  const double product = x * y;
  return in_range(product) ? sqrt(product) : sqrt(x) * sqrt(y);
}

/// x / y^2
inline double over_square(double x, double y) {
  const double square = y * y;
  return in_range(square) ? x / square : x / y / y;
}

/// x / y^(3/2)
inline double over_root_of_cube(double x, double y) {
  const double cube = y * y * y;
  return in_range(cube) ? x / sqrt(cube) : x / y / sqrt(y);
}

}  // namespace ORV_TAG
}  // namespace orv
