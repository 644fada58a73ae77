// SPDX-License-Identifier: MIT
// Powx at the exponents that have functions of their own: results, status codes and names in the
// records are those functions', at each level.
#include <algorithm>
#include <cmath>
#include <limits>

#include "harness.hpp"

using namespace orv_test;

namespace {

/// What a kernel gives for numbers of which many are reported.
template <class R>
struct Outcome {
  std::vector<R> results;
  std::vector<std::pair<std::string, Codes::value_type>> records;
};

template <class R>
Outcome<R> outcome(const Kernel& kernel, const std::vector<R>& x, double second) {
  const int n = static_cast<int>(x.size());
  const std::vector<R> seconds(n, static_cast<R>(second));
  Outcome<R> seen{std::vector<R>(n, 77), {}};
  reports().clear();
  kernel.call({.n = n,
               .inputs = {x.data(), seconds.data()},
               .results = {seen.results.data()},
               .scalars = &second});
  for (const Report& report : reports()) {
    seen.records.push_back({{report.func_name, static_cast<size_t>(report.func_name_len)},
                            {report.code, report.index}});
  }
  return seen;
}

template <class R>
std::vector<R> many_numbers() {
  using L = std::numeric_limits<R>;
  std::vector<R> list;
  for (const R x : {R(0), L::denorm_min(), L::min(), R(1) / 3, R(1), R(2), R(27), L::max(),
                    L::infinity(), L::quiet_NaN()}) {
    list.insert(list.end(), {x, -x});
  }
  for (int i = 0; i < 60; ++i) list.push_back(static_cast<R>((i - 20) * 0.37));
  return list;
}

/// Another function in the same slot.
Kernel slot_of(const Kernel& like, const char* function) {
  const auto all = all_slots();
  return *std::ranges::find_if(all, [&](const Kernel& kernel) {
    return kernel.type == like.type && kernel.function == function && kernel.slot == like.slot;
  });
}

template <class R>
void check_exponents(const Kernel& powx) {
  struct Row {
    R exponent;
    const char* function;
  };
  const std::vector<R> x = many_numbers<R>();
  for (const auto& [b, function] :
       {Row{2, "Sqr"}, Row{-1, "Inv"}, Row{R(0.5), "Sqrt"}, Row{R(-0.5), "InvSqrt"},
        Row{R(1) / 3, "Cbrt"}, Row{R(-1) / 3, "InvCbrt"}, Row{R(2) / 3, "Pow2o3"},
        Row{R(1.5), "Pow3o2"}}) {
    SCOPED_TRACE(powx.name() + " like " + function);
    const Outcome<R> expected = outcome(slot_of(powx, function), x, b), seen = outcome(powx, x, b);
    EXPECT_TRUE(same_bits(seen.results, expected.results));
    EXPECT_EQ(seen.records, expected.records);

    // The next number is no special exponent.
    const R next = std::nextafter(b, R(0));
    EXPECT_TRUE(
        same_bits(outcome(powx, x, next).results, outcome(slot_of(powx, "Pow"), x, next).results));
  }
  const Outcome<R> copy = outcome(powx, x, 1);
  EXPECT_TRUE(same_bits(copy.results, x));
  EXPECT_TRUE(copy.records.empty());
}

TEST(SpecialExponents, HaveFunctionsOfTheirOwn) {
  int kernels = 0;
  for (const Kernel& kernel : all_slots()) {
    if (kernel.function != "Powx" || !strchr("sd", kernel.type)) continue;
    ++kernels;
    in_fresh_thread([&] {
      listen();
      kernel.in_its_type([&](auto number) { check_exponents<decltype(number)>(kernel); });
    });
  }
  EXPECT_EQ(kernels, 6);
}

}  // namespace
