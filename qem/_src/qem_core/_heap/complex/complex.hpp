// SPDX-License-Identifier: MIT
// Complex numbers in extended arithmetic, and what their functions share: the routines take
// doubles, compute each part to a few units of 64 bits, and round once at the end.
#pragma once

#include <orv/qem.h>

#include "../extended/format.hpp"

namespace orv {
inline namespace ORV_TAG {

struct ExtendedComplex {
  Extended re, im;
};

inline void store(QemComplexDouble* result, const ExtendedComplex& z) {
  *result = {static_cast<double>(z.re), static_cast<double>(z.im)};
}

/// -i z: the circular functions of z follow from the hyperbolic ones of i z.
inline void turn_back(QemComplexDouble* z) { *z = {z->im, -z->re}; }

inline bool is_finite(double x) { return __builtin_isfinite(x); }
inline bool is_infinite(double x) { return __builtin_isinf(x); }

}  // namespace ORV_TAG
}  // namespace orv
