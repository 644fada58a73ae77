// SPDX-License-Identifier: MIT
// Every kernel over its function's whole domain: its accuracy, and that no neighbour in the vector
// changes a bit of its result.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "measure.hpp"

namespace orv_test {
namespace {

constexpr int random_points = 100000;

class Accuracy : public testing::TestWithParam<FunctionSlots> {
 protected:
  void SetUp() override {
    quiet_mode();
    f_ = find_function(GetParam().type, GetParam().name);
    ASSERT_TRUE(f_) << "add a row for it to tests/accuracy/functions.cpp";
  }
  const Function* f_ = nullptr;
};

TEST_P(Accuracy, HoldsItsLevelAndItsRecord) {
  const Reached reached = sample(*f_, GetParam(), 1, random_points);
  for (const Kernel& slot : GetParam().slots) {
    const Worst& worst = reached.at(slot.call.address);
    EXPECT_GT(worst.points, random_points / 9);
    for (const std::string& fault : faults(slot, *f_, worst)) ADD_FAILURE() << fault;
  }
}

/// Every point again, some places further among other points, a good part of which are rare ones.
/// Of two NaNs it counts only that they are.
template <class R>
void neighbours_do_not_matter(const Kernel& kernel, Points<R> points) {
  SCOPED_TRACE(kernel.name());
  const std::vector<R> expected = results(kernel, points);
  const ptrdiff_t further = 5 * points.width;
  for (std::vector<R>& x : points.operand) {
    if (!x.empty()) std::rotate(x.begin(), x.end() - further, x.end());
  }
  std::vector<R> y = results(kernel, points);
  std::rotate(y.begin(), y.begin() + 5 * numbers_of(kernel), y.end());
  for (size_t i = 0; i < y.size(); ++i) {
    ASSERT_TRUE(bits_of(y[i]) == bits_of(expected[i]) ||
                (std::isnan(y[i]) && std::isnan(expected[i])))
        << "point " << i / numbers_of(kernel);
  }
}

TEST_P(Accuracy, NeighboursDoNotMatter) {
  for (const Kernel& kernel : GetParam().kernels()) {
    kernel.in_its_type([&]<class R>(R) {
      neighbours_do_not_matter(kernel, make_points<R>(*f_, kernel, 2, random_points));
    });
  }
}

TEST(Digests, AreAsRecorded) {
  Digests recorded;
  std::ifstream file(ORV_DIGESTS_FILE);
  for (std::string name, digest; file >> name >> digest;) recorded[name] = digest;
  EXPECT_EQ(compute_digests(), recorded) << "record what accuracy_report --digests prints";
}

INSTANTIATE_TEST_SUITE_P(, Accuracy, testing::ValuesIn(ready_functions()),
                         [](const auto& test) { return test.param.full_name(); });

}  // namespace

void PrintTo(const FunctionSlots& function, std::ostream* out) { *out << function.full_name(); }

}  // namespace orv_test
