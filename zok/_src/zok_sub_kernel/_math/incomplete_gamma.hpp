// SPDX-License-Identifier: MIT
// The incomplete gamma functions P(a, x) and Q(a, x) = 1 - P(a, x), and their inverse.
#pragma once

#include "extended.hpp"

namespace orv {
inline namespace ORV_TAG {

/// Q(a, x), 1 where a or x is not above 0.
double _vdSSQ(double a, double x);

/// x with Q(a, x) = q. NaN where a is not above 0 and finite or q not from 0 to 1.
double _dinvQ(double a, double q);

// Under the control words of extended arithmetic:

/// P(a, x), 0 where a or x is not above 0.
Extended lower_incomplete_gamma(Extended a, Extended x);

/// _dinvQ by both probabilities of one point, each with its own digits.
Extended inverse_incomplete_gamma(Extended a, double p, double q);

}  // namespace ORV_TAG
}  // namespace orv
