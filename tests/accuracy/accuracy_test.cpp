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
    const Worst& worst = reached.at(slot.address);
    EXPECT_GT(worst.points, random_points / 3);
    for (const std::string& fault : faults(slot, *f_, worst)) ADD_FAILURE() << fault;
  }
}

/// Every point again, at another place among other points, a good part of which are rare ones. Of
/// two NaNs it counts only that they are.
template <class R>
void neighbours_do_not_matter(const Kernel& kernel, const Points<R>& points) {
  SCOPED_TRACE(kernel.name());
  const auto place =
      [&](size_t i) {  // of number i: places of whole points are 7919 further each time
        const size_t width = points.width, point = i / width;
        return (point * 7919 + 1) % points.n * width + i % width;
      };
  ASSERT_NE(points.n % 7919, 0);
  Points<R> moved = points;
  const std::vector<R> expected = results(kernel, points);
  for (int j = 0; j < operands_of(kernel); ++j) {
    for (size_t i = 0; i < expected.size(); ++i) moved.operand[j][place(i)] = points.operand[j][i];
  }
  const std::vector<R> y = results(kernel, moved);
  for (size_t i = 0; i < expected.size(); ++i) {
    const R here = expected[i], there = y[place(i)];
    ASSERT_TRUE(bits_of(here) == bits_of(there) || (std::isnan(here) && std::isnan(there)))
        << points.text(operands_of(kernel), static_cast<int32_t>(i / points.width));
  }
}

TEST_P(Accuracy, NeighboursDoNotMatter) {
  const bool in_float = GetParam().type == 's' || GetParam().type == 'c';
  for (const Kernel& kernel : GetParam().kernels()) {
    if (in_float) {
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
