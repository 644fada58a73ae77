// Every kernel over its function's whole domain: its accuracy, and that no neighbour in the vector
// changes a bit of its result.
#include <gtest/gtest.h>

#include <cstring>

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

/// Equal to the bit; of two NaNs only that they are.
template <class R>
bool same(const R* x, const R* y, int width) {
  for (int part = 0; part < width; ++part) {
    const bool both_nan = std::isnan(x[part]) && std::isnan(y[part]);
    if (!both_nan && bits_of(x[part]) != bits_of(y[part])) return false;
  }
  return true;
}

/// Points in a vector whose other elements are special values.
template <class R>
class HostileVector {
 public:
  HostileVector(const Kernel& kernel, const Points<R>& points, int32_t length)
      : kernel_(kernel), points_(points), expected_(results(kernel, points)) {
    const std::vector<R> special = special_values<R>();
    in_.width = points.width;
    for (int j = 0; j < 2; ++j) {
      for (size_t i = 0; i < static_cast<size_t>(length) * points.width; ++i) {
        special_[j].push_back(special[i * (2 * j + 1) % special.size()]);
      }
    }
    clear(length);
  }

  void clear(int32_t length) {
    in_.n = length;
    for (int j = 0; j < 2; ++j) in_.operand[j] = special_[j];
    placed_.clear();
  }

  void place(int32_t position, int32_t point) {
    for (int j = 0; j < operands_of(kernel_); ++j) {
      std::memcpy(&in_.operand[j][position * in_.width], points_.at(j, point),
                  in_.width * sizeof(R));
    }
    placed_.push_back({position, point});
  }

  void expect_same() const {
    const std::vector<R> y = results(kernel_, in_);
    for (const auto [position, point] : placed_) {
      ASSERT_TRUE(same(&y[position * in_.width], &expected_[point * in_.width], in_.width))
          << points_.text(operands_of(kernel_), point) << " at place " << position << " of "
          << in_.n;
    }
  }

 private:
  struct Placed {
    int32_t position, point;
  };
  Kernel kernel_;
  const Points<R>& points_;
  std::vector<R> expected_;
  std::vector<R> special_[2];
  Points<R> in_;
  std::vector<Placed> placed_;
};

template <class R>
void neighbours_do_not_matter(const Kernel& kernel, const Points<R>& points) {
  SCOPED_TRACE(kernel.name());
  // Every other element, from an even and from an odd place.
  for (const int32_t shift : {0, 1}) {
    HostileVector<R> vector(kernel, points, 2 * points.n);
    for (int32_t i = 0; i < points.n; ++i) vector.place(2 * i + shift, i);
    vector.expect_same();
  }
  // A single one at every place of vectors up to two of the longest blocks and one.
  constexpr int32_t longest = 33;
  HostileVector<R> vector(kernel, points, longest);
  int32_t point = 0;
  for (int round = 0; round < 4; ++round) {
    for (int32_t n = 1; n <= longest; ++n) {
      for (int32_t position = 0; position < n; ++position) {
        vector.clear(n);
        vector.place(position, point++ % points.n);
        vector.expect_same();
        if (testing::Test::HasFatalFailure()) return;
      }
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
