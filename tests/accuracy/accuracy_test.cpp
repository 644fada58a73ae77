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

/// Every point again, between special values, at even places and at odd ones. Of two NaNs it counts
/// only that they are.
template <class R>
void neighbours_do_not_matter(const Kernel& kernel, const Points<R>& points) {
  SCOPED_TRACE(kernel.name());
  const std::vector<R> special = special_values<R>(), expected = results(kernel, points);
  const size_t width = points.width;
  for (const size_t shift : {0, 1}) {
    Points<R> between = points;
    between.n = 2 * points.n;
    const auto place = [&](size_t k) { return (2 * (k / width) + shift) * width + k % width; };
    for (int j = 0; j < operands_of(kernel); ++j) {
      std::vector<R>& x = between.operand[j];
      x.resize(2 * x.size());
      for (size_t k = 0; k < x.size(); ++k) x[k] = special[k / 2 * (2 * j + 1) % special.size()];
      for (size_t k = 0; k < expected.size(); ++k) x[place(k)] = points.operand[j][k];
    }
    const std::vector<R> y = results(kernel, between);
    for (size_t k = 0; k < expected.size(); ++k) {
      ASSERT_TRUE(bits_of(y[place(k)]) == bits_of(expected[k]) ||
                  (std::isnan(y[place(k)]) && std::isnan(expected[k])))
          << points.text(operands_of(kernel), static_cast<int32_t>(k / width));
    }
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
