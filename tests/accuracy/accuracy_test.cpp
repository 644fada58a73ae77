// Every kernel over its function's whole domain: its accuracy, and that no neighbour in the vector
// changes a bit of its result.
#include <gtest/gtest.h>

#include "measure.hpp"

namespace orv_test {
namespace {

constexpr int random_points = 400000;

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

/// Every point again, at another place among other points, a good part of which are rare ones. Of
/// two NaNs it counts only that they are.
template <class R>
void neighbours_do_not_matter(const Kernel& kernel, const Points<R>& points) {
  SCOPED_TRACE(kernel.name());
  const auto place = [&](int32_t i) {  // 7919 further each time
    return static_cast<int32_t>((i * int64_t{7919} + 1) % points.n);
  };
  ASSERT_NE(points.n % 7919, 0);
  Points<R> moved = points;
  for (int j = 0; j < points.operands; ++j) {
    for (int32_t i = 0; i < points.n; ++i) {
      std::copy_n(points.at(j, i), points.width, &moved.operand[j][place(i) * points.width]);
    }
  }
  const std::vector<R> expected = results(kernel, points), y = results(kernel, moved);
  const int numbers = numbers_of(kernel);
  for (int32_t i = 0; i < points.n; ++i) {
    for (int k = 0; k < numbers; ++k) {
      const R here = expected[i * numbers + k], there = y[place(i) * numbers + k];
      ASSERT_TRUE(bits_of(here) == bits_of(there) || (std::isnan(here) && std::isnan(there)))
          << points.text(i);
    }
  }
}

TEST_P(Accuracy, NeighboursDoNotMatter) {
  for (const Kernel& kernel : GetParam().kernels()) {
    if (kernel.in_float()) {
      neighbours_do_not_matter(kernel, make_points<float>(*f_, kernel, 2, random_points));
    } else {
      neighbours_do_not_matter(kernel, make_points<double>(*f_, kernel, 2, random_points));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(, Accuracy, testing::ValuesIn(ready_functions()),
                         [](const auto& test) { return test.param.full_name(); });

}  // namespace

void PrintTo(const FunctionSlots& function, std::ostream* out) { *out << function.full_name(); }

}  // namespace orv_test
