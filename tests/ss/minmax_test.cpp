// Extremes bit for bit: zeros have signs, and NaNs are passed over.
#include <limits>
#include <random>

#include "support.hpp"

using namespace orv_test;

namespace {

TYPED_TEST(EachPrecision, ExtremesAgreeWithALoop) {
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
  constexpr uint64_t asked[] = {SS_EST_MIN, SS_EST_MAX, SS_EST_MIN | SS_EST_MAX};
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
      for (int way = 0; way < 24; ++way) {
        SCOPED_TRACE(testing::Message()
                     << "p " << p << " n " << n << " kind " << kind << " way " << way);
        Choices choose{way};
        const int64_t layout = choose(2) ? SS_ROWS : SS_COLUMNS;
        const bool masked = choose(2), wide = choose(2);
        const uint64_t estimates = asked[choose(3)];
        std::vector<T> low = start, high = start, least = start, largest = start;
        for (int64_t i = 0; i < n * p; ++i) {
          const int64_t j = i % p;
          if (masked && some[j] == 0) continue;
          if ((estimates & SS_EST_MIN) != 0 && x[i] < least[j]) least[j] = x[i];
          if ((estimates & SS_EST_MAX) != 0 && x[i] > largest[j]) largest[j] = x[i];
        }
        const std::vector<T> data = laid_out(layout, p, x);
        Task<T> task(p, n, layout, data.data(), wide);
        if (masked) task.set_integers(SS_PARAM_VARIABLE_MASK, some);
        if ((estimates & SS_EST_MIN) != 0) task.set(SS_PARAM_MINIMUM, low);
        if ((estimates & SS_EST_MAX) != 0) task.set(SS_PARAM_MAXIMUM, high);
        ASSERT_EQ(Entries<T>::minmax(task, estimates, SS_METHOD_FAST, nullptr), SS_OK);
        ASSERT_EQ(bits(low), bits(least));
        ASSERT_EQ(bits(high), bits(largest));
      }
    }
  }
}

}  // namespace
