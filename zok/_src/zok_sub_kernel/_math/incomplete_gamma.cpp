// SPDX-License-Identifier: MIT
// In extended arithmetic, with functions of its own: nothing is reported to anyone, and what
// cancels in a ln x - x - ln gamma(a) is beyond the digits of a double.
#include "incomplete_gamma.hpp"

#include "log_gamma.hpp"

namespace orv {
inline namespace ORV_TAG {
namespace {

constexpr double infinity = __builtin_inf();
constexpr Extended root_of_pi = 0x1.C5BF891B4EF6AA7Ap+0L;

Extended ln(Extended x) { return orv_qem_kernel_logl_scalar(x); }
Extended exp(Extended x) { return orv_qem_kernel_expl_scalar(x); }
Extended size(Extended x) { return __builtin_fabsl(x); }
Extended root(Extended x) { return __builtin_sqrtl(x); }

/// Beyond this many terms the sums below have long ended.
constexpr int most_terms = 1 << 20;
constexpr Extended tolerance = 0x1p-62L;

/// From here on the expansion for large a is exact.
constexpr Extended large = 1e8L;

/// u - ln(1 + u), u above -1.
Extended log_excess(Extended u) {
  if (size(u - 0.1L) > 0.4L) return u - ln(1 + u);
  const Extended r = u / (2 + u), square = r * r;
  Extended sum = 0;
  for (int k = 14; k >= 0; --k) sum = sum * square + 1 / static_cast<Extended>(2 * k + 3);
  return u * r - 2 * r * square * sum;
}

/// a (x/a - 1 - ln(x/a)), at least 0.
Extended deviance(Extended a, Extended x) {
  const Extended u = (x - a) / a;
  return a * (u > -0.5L ? log_excess(u) : u - ln(x / a));
}

/// ln(x^a e^-x / gamma(a + 1)).
Extended log_term(Extended a, Extended x) {
  if (a < 0.5L) return a * ln(x) - x - log_gamma_near_1(a);
  if (a < stirling_from) return a * ln(x) - x - lgamma_pos(a + 1);
  return -deviance(a, x) - (ln_root_2_pi + 0.5L * ln(a) + stirling_rest(a));
}

/// P or Q as e^log_term times this.
struct Tail {
  Extended factor;
  bool upper;
};

/// 1 + x/(a + 1) + x^2/((a + 1)(a + 2)) + ..., x below a + 1, till the rest can't be seen.
Extended lower_series(Extended a, Extended x) {
  Extended n = a, term = 1, sum = 1;
  for (int i = 0; i < most_terms; ++i) {
    n += 1;
    term *= x / n;
    sum += term;
    if (term * x <= tolerance * sum * (n - x)) break;
  }
  return sum;
}

/// a times Legendre's fraction 1/(x + 1 - a - 1 (1 - a)/(x + 3 - a - 2 (2 - a)/(x + 5 - a - ...))),
/// x at least 1 and a, as a sum (J. Steed; A. R. Barnett, D. H. Feng, J. W. Steed, L. J. B.
/// Goldfarb 1974).
Extended upper_fraction(Extended a, Extended x) {
  Extended denominator = x + 1 - a, inverse = 1 / denominator, step = inverse, sum = inverse;
  for (int k = 1; k < most_terms; ++k) {
    const Extended numerator = k * (k - a);
    denominator += 2;
    const Extended previous = inverse;
    inverse = 1 / (denominator - numerator * previous);
    const Extended ratio = numerator * previous * inverse;
    step *= ratio;
    sum += step;
    if (size(step * ratio) <= tolerance * sum * (1 - size(ratio))) break;
  }
  return a * sum;
}

Tail tail_of(Extended a, Extended x);

/// By the tail of the normal distribution and what the two lack (N. M. Temme 1979).
Tail large_tail(Extended a, Extended x) {
  const Extended s = deviance(a, x), u = (x - a) / a;
  const Extended eta = root(2 * s / a) * (x < a ? -1 : 1);
  // e^s erfc(root(s)), from Q(1/2, s).
  const Tail half = tail_of(0.5L, s);
  const Extended part = 2 / root_of_pi * root(s) * half.factor;
  const Extended normal = half.upper ? part : exp(s) - part;
  const Extended lacking =
      size(eta) > 0.1L
          ? 1 / u - 1 / eta
          : -1 / 3.0L + eta * (1 / 12.0L + eta * (-2 / 135.0L + eta * (1 / 864.0L + eta / 2835))) -
                (1 / 540.0L + eta / 288) / a;
  const Extended whole = root_of_pi / root(2.0L) * root(a) * normal;
  return {(whole + (x < a ? -lacking : lacking)) * (1 + 1 / (12 * a)), !(x < a)};
}

Tail tail_of(Extended a, Extended x) {
  if (a >= large) return large_tail(a, x);
  if (x >= 1 && x >= a) return {upper_fraction(a, x), true};
  return {lower_series(a, x), false};
}

/// P or Q, a and x above 0.
Extended probability(Extended a, Extended x, bool upper) {
  if (a != a || x != x || (a == infinity && x == infinity)) return a * x * __builtin_nan("");
  if (x == infinity || a == infinity) return upper == (a == infinity);
  const Tail tail = tail_of(a, x);
  const Extended value = exp(log_term(a, x)) * tail.factor;
  return tail.upper == upper ? value : 1 - value;
}

// ---- The inverse -------------------------------------------------------------------------------

/// A tail T beside the one that is looked for.
struct Distance {
  Extended log;    // ln(T / target)
  Extended ratio;  // T over the derivative of P by ln x
};

Distance distance(Extended a, Extended x, bool upper, Extended log_target) {
  const Extended term = log_term(a, x);
  const Tail tail = tail_of(a, x);
  if (tail.upper == upper) return {term + ln(tail.factor) - log_target, tail.factor / a};
  const Extended slope = exp(term), rest = 1 - slope * tail.factor;
  return {ln(rest) - log_target, rest / (a * slope)};
}

/// The cube of a normal number (E. B. Wilson and M. M. Hilferty 1931), or where that fails, for
/// small a or far down, P's first term.
Extended first_guess(Extended a, double p, double q) {
  const double smaller = q < p ? q : p;
  double z;
  dCdfNormInv_SC(&smaller, &z);
  const Extended d = 1 / (9 * a), cube_root = 1 - d + (q < p ? -z : z) * root(d);
  if (cube_root > 0.3L) return a * cube_root * cube_root * cube_root;
  return exp((ln(p) + (a < 0.5L ? log_gamma_near_1(a) : lgamma_pos(a + 1))) / a);
}

/// Where Newton's step leaves the interval.
Extended between(Extended low, Extended high) {
  if (low == 0) return high / 16;
  return high > 2 * low ? root(low) * root(high) : 0.5L * (low + high);
}

/// Newton's method on the logarithm of the smaller tail, which bends one way only, as a function of
/// x or, down from the middle, of ln x: from any start it comes to the root from one side.
Extended inverse(Extended a, double p, double q) {
  constexpr int most_rounds = 400;
  constexpr Extended close = 1e-12L, underflow = 0x1p-1080L;
  const bool upper = q < p;
  const Extended log_target = ln(upper ? q : p);
  Extended low = 0, high = infinity, x = first_guess(a, p, q);
  for (int round = 0; round < most_rounds && x > underflow; ++round) {
    const Distance d = distance(a, x, upper, log_target);
    ((d.log > 0) == upper ? low : high) = x;
    const Extended step = d.log * d.ratio, next = upper ? x + x * step : x * exp(-step);
    if (size(next - x) <= close * x) return next;
    x = next > low && next < high ? next : between(low, high);
  }
  return x;
}

}  // namespace

Extended lower_incomplete_gamma(Extended a, Extended x) {
  return x <= 0 || a <= 0 ? 0 : probability(a, x, false);
}

Extended inverse_incomplete_gamma(Extended a, double p, double q) {
  if (!(a > 0 && a < infinity && p >= 0 && q >= 0 && p <= 1 && q <= 1)) return __builtin_nan("");
  if (p == 0) return 0;
  if (q == 0) return infinity;
  return inverse(a, p, q);
}

double _vdSSQ(double shape, double point) {
  const auto upper = [](Extended a, Extended x) {
    return x <= 0 || a <= 0 ? 1 : probability(a, x, true);
  };
  return in_extended(upper, shape, point);
}

double _dinvQ(double shape, double probability) {
  const auto by_both = [](double a, double q) { return inverse_incomplete_gamma(a, 1 - q, q); };
  return in_extended(by_both, shape, probability);
}

}  // namespace ORV_TAG
}  // namespace orv
