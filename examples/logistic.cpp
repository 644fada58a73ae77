// SPDX-License-Identifier: MIT
// Vector functions: a logistic curve, its logarithm with reports, and what a level costs in digits.
#include <cmath>
#include <cstdio>
#include <orv/math.hpp>
#include <vector>

namespace {

/// 1 / (1 + e^-x), in place of x.
void logistic(std::span<double> x) {
  const std::vector<double> ones(x.size(), 1.0), minus(x.size(), -1.0);
  orv::mul(x, minus, x);
  orv::exp(x, x);
  orv::add(x, ones, x);
  orv::inv(x, x);
}

double largest_difference(std::span<const double> a, std::span<const double> b) {
  double largest = 0;
  for (size_t i = 0; i < a.size(); ++i) {
    largest = std::fmax(largest, std::fabs(a[i] / b[i] - 1));
  }
  return largest;
}

}  // namespace

int main() {
  std::vector<double> x(1001);
  for (size_t i = 0; i < x.size(); ++i) x[i] = (static_cast<double>(i) - 500) * 1.6;

  std::vector<double> y = x;
  logistic(y);
  std::printf("logistic(%g) = %.15g, logistic(0) = %g\n", x[501], y[501], y[500]);

  // Far on the left the curve is 0, in double precision, and has no logarithm. Elements that are
  // reported don't end a call: they are collected, or a callback mends them.
  std::vector<orv::report> reports;
  {
    const orv::collect here(reports);
    orv::ln(y);
  }
  std::printf("%zu of %zu elements have no logarithm", reports.size(), y.size());
  if (!reports.empty()) std::printf(", the first is %zu", reports[0].index);
  std::printf("\n");

  const orv::scoped_callback mend([](orv::report& r) { r.result = -745; });
  const orv::scoped_mode quiet(orv::route::silent | orv::route::call_back);
  std::printf("with a floor, the least logarithm is %g\n", orv::ln(y)[0]);

  // A level is an argument, or the thread's for a scope.
  const auto best = orv::tanh(x);
  const orv::scoped_mode quick(orv::ep);
  std::printf("tanh at EP differs from HA by %.0e at most, at LA by %.0e\n",
              largest_difference(orv::tanh(x), best),
              largest_difference(orv::tanh(x, orv::la), best));

  // What a function does is known when the program is compiled.
  constexpr auto facts = orv::ln.facts<double>();
  static_assert(facts.reports(QEM_STATUS_SINGULARITY));
  std::printf("ln: %s; code %d for %s; within %g ulp at HA\n", facts.what, facts.conditions[1].code,
              facts.conditions[1].when, facts.error(orv::ha));
}
