// Extremes bit for bit: zeros have signs, and NaNs are passed over.
#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "support.hpp"

using namespace orv_test;

namespace {

constexpr uint64_t both = SS_EST_MIN | SS_EST_MAX;

template <class T>
struct Extremes {
  std::vector<T> minimum, maximum;
};

/// What the entry makes of data that have observation i of variable j at i p + j.
template <class T>
Extremes<T> found(int64_t p, int64_t n, std::vector<T> x, Extremes<T> start, uint64_t estimates,
                  int64_t layout, const std::vector<int64_t>& mask, bool wide) {
  if (layout == SS_ROWS) {
    const std::vector<T> columns = x;
    for (int64_t i = 0; i < n * p; ++i) x[i % p * n + i / p] = columns[i];
  }
  Task<T> task(p, n, layout, x.data(), wide);
  if (!mask.empty()) task.set_integers(SS_PARAM_VARIABLE_MASK, mask);
  if ((estimates & SS_EST_MIN) != 0) task.set(SS_PARAM_MINIMUM, start.minimum);
  if ((estimates & SS_EST_MAX) != 0) task.set(SS_PARAM_MAXIMUM, start.maximum);
  EXPECT_EQ(Entries<T>::minmax(task, estimates, SS_METHOD_FAST, nullptr), SS_OK);
  return start;
}

template <class T>
Extremes<T> expected(int64_t p, int64_t n, const std::vector<T>& x, Extremes<T> e,
                     uint64_t estimates, const std::vector<int64_t>& mask) {
  for (int64_t i = 0; i < n * p; ++i) {
    if (!mask.empty() && mask[i % p] == 0) continue;
    T &low = e.minimum[i % p], &high = e.maximum[i % p];
    if ((estimates & SS_EST_MIN) != 0 && x[i] < low) low = x[i];
    if ((estimates & SS_EST_MAX) != 0 && x[i] > high) high = x[i];
  }
  return e;
}

template <class T>
class MinMax : public testing::Test {};
TYPED_TEST_SUITE(MinMax, Precisions);

TYPED_TEST(MinMax, AgreesWithALoop) {
  using T = TypeParam;
  constexpr T nan = std::numeric_limits<T>::quiet_NaN();
  constexpr T infinity = std::numeric_limits<T>::infinity();
  // Kinds of data: any numbers; many NaNs and infinities; zeros of both signs at one end or both,
  // and few of them, so that the first is anywhere.
  std::vector<T> kinds[] = {{},
                            {nan, infinity, -infinity, 1, nan},
                            {T(0), -T(0)},
                            {T(0), -T(0), -1},
                            {T(0), -T(0), 1},
                            std::vector<T>(100, -2)};
  kinds[5][0] = 0, kinds[5][1] = -T(0);
  const struct {
    int64_t p, n;
  } sizes[] = {{1, 1},    {1, 1000}, {2, 63},   {3, 500},  {4, 129}, {5, 17},  {10, 7},
               {10, 300}, {17, 33},  {255, 21}, {256, 20}, {257, 9}, {1030, 5}};
  std::mt19937 random(5);
  for (const auto& [p, n] : sizes) {
    for (size_t kind = 0; kind < std::size(kinds); ++kind) {
      std::vector<T> x(p * n), start;
      for (T& v : x) {
        v = kinds[kind].empty() ? T(random()) - T(0x1p31)
                                : kinds[kind][random() % kinds[kind].size()];
      }
      std::vector<int64_t> some;
      for (int64_t j = 0; j < p; ++j) {
        const T starts[] = {x[j], nan, T(0), -T(0), -3, 3};
        start.push_back(starts[random() % std::size(starts)]);
        some.push_back(random() % 3);
      }
      for (int way = 0; way < 8; ++way) {
        const int64_t layout = way % 2 != 0 ? SS_ROWS : SS_COLUMNS;
        const std::vector<int64_t> mask = (way & 2) != 0 ? some : std::vector<int64_t>();
        for (const uint64_t estimates : {uint64_t{SS_EST_MIN}, uint64_t{SS_EST_MAX}, both}) {
          SCOPED_TRACE(testing::Message() << "p " << p << " n " << n << " kind " << kind << " way "
                                          << way << " estimates " << estimates);
          const auto f = found<T>(p, n, x, {start, start}, estimates, layout, mask, (way & 4) != 0);
          const auto e = expected<T>(p, n, x, {start, start}, estimates, mask);
          ASSERT_EQ(bits(f.minimum), bits(e.minimum));
          ASSERT_EQ(bits(f.maximum), bits(e.maximum));
        }
      }
    }
  }
}

}  // namespace
