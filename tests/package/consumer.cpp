// SPDX-License-Identifier: MIT
// An application of the C++ face in two units, the second of which is compiled with
// ORV_SECOND_UNIT: what a scope in one sets, calls in the other see, and nothing is defined twice.
#include <orv/orv.hpp>

#include <cmath>
#include <cstdio>

std::vector<double> logarithms(const std::vector<double>& x);

#ifdef ORV_SECOND_UNIT
std::vector<double> logarithms(const std::vector<double>& x) { return orv::ln(x); }
#else
int main() {
  std::vector<orv::report> reports;
  {
    const orv::collect here(reports);
    logarithms({1, 0, 2});
  }
  bool thrown = false;
  try {
    const orv::scoped_callback refuse(
        [](orv::report& r) { throw orv::error(r.code, r.function, "no logarithm"); });
    logarithms({-1});
  } catch (const orv::error& e) {
    thrown = e.status() == QEM_STATUS_DOMAIN;
  }
  orv::stream stream(orv::mt19937, 1);
  const auto x = orv::sample(stream, orv::normal{.mean = 3}, 10000);
  const double mean = orv::dataset(orv::table(x, 1)).mean()[0];
  std::printf("%zu reported, mean %g\n", reports.size(), mean);
  return reports.size() != 1 || reports[0].index != 1 || !thrown || std::fabs(mean - 3) > 0.05;
}
#endif
