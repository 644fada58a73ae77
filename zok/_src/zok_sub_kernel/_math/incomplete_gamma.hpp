// The incomplete gamma functions P(a, x) and Q(a, x) = 1 - P(a, x), and their inverse.
#pragma once

namespace orv {
inline namespace ORV_TAG {

/// Q(a, x), 1 where a or x is not above 0.
double _vdSSQ(double a, double x);

/// x with Q(a, x) = q. NaN where a is not above 0 or q not from 0 to 1.
double _dinvQ(double a, double q);

/// Of one point: the lower and the upper probability. Both count, the smaller one for its digits.
double inverse_incomplete_gamma(double a, double p, double q);

/// P(a, x), 0 where a or x is not above 0.
double lower_incomplete_gamma(double a, double x);

}  // namespace ORV_TAG
}  // namespace orv
