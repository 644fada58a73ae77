// SPDX-License-Identifier: MIT
// Extremes, quantiles, sorted data and weighted quantiles against their definitions.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "support.hpp"

using namespace orv_test;

namespace {

// Bit for bit: zeros have signs, and NaNs are passed over.
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
  const std::array<int64_t, 2> sizes[] = {{1, 1},    {1, 1000}, {2, 63},   {3, 500}, {4, 129},
                                          {5, 17},   {10, 7},   {10, 300}, {17, 33}, {255, 21},
                                          {256, 20}, {257, 9},  {1030, 5}};
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

/// Services that tell what they were asked, and run items out of order on threads in turn.
struct Asked {
  static inline int32_t items, threads, usable;
  static inline bool run;
  static constexpr SSThreadServices services = {
      [](int32_t count, int32_t thread_count, void* args, SSItemFunction function) {
        items = count;
        threads = thread_count;
        for (int32_t i = run ? count : 0; i-- > 0;)
          function(i, i % thread_count, thread_count, args);
      },
      nullptr, nullptr, nullptr, [] { return usable; }};
};

template <class T>
T quantile(const std::vector<T>& sorted, T q) {
  const auto n = static_cast<int>(sorted.size());
  const T f = static_cast<T>(n - 1) * q;
  const int k = static_cast<int>(f);
  const T t = f - static_cast<T>(k);
  if (t == 0) return sorted[k];  // though the next may be infinite
  return (1 - t) * sorted[k] + t * sorted[std::min(k + 1, n - 1)];
}

template <class T>
std::vector<T> random_data(int size) {
  std::mt19937 random(3);
  std::normal_distribution<T> normal;
  std::vector<T> x(size);
  // A third of the values are small integers, and so meet their equals. A few are infinite.
  for (auto& v : x) v = random() % 3 == 0 ? static_cast<T>(random() % 10) : normal(random);
  for (int i = 5; i < size; i += 6) x[i] = std::numeric_limits<T>::infinity();
  return x;
}

/// Orders for n observations, the last lists having every rank and the places between.
template <class T>
std::vector<std::vector<T>> order_lists(int n) {
  std::vector<T> all;
  for (int k = 0; k <= 2 * n; ++k) all.push_back(static_cast<T>(k) / static_cast<T>(2 * n));
  return {{T(0.1), T(0.2), T(0.3), T(0.4), T(0.5), T(0.6), T(0.7), T(0.8), T(0.9)},
          {0, 0, T(1e-9), T(0.25), T(0.25), T(0.251), T(0.999), 1, 1},
          {T(0.9), 0, T(0.5), 1, T(0.5), T(0.01)},
          {T(0.75)},
          {},
          all,
          {all.rbegin(), all.rend()}};
}

/// Results are packed, and beyond them nothing is written.
TYPED_TEST(EachPrecision, QuantilesFollowTheDefinition) {
  using T = TypeParam;
  constexpr int p = 5;
  Asked::usable = 3, Asked::run = true;
  orv_threads_set_count(3);
  const SSThreadServices* const services[] = {orv_threads_serial(), orv_threads_pool(),
                                              &Asked::services};
  const uint64_t estimates[] = {SS_EST_QUANTILES, SS_EST_ORDER_STATS,
                                SS_EST_QUANTILES | SS_EST_ORDER_STATS};
  const std::vector<int64_t> mask{0, 1, 0, 0, -1};
  for (int c = 0; c < 3 * 2 * 2 * 2 * 2 * 3 * 7 * 8; ++c) {
    SCOPED_TRACE(c);
    Choices choose{c};
    const auto* threads = services[choose(3)];
    const bool rows = choose(2), masked = choose(2), wide = choose(2), sorted_rows = choose(2);
    const uint64_t asked = estimates[choose(3)];
    const auto list = choose(7);
    const int n = std::array{1, 2, 8, 10, 29, 71, 150, 701}[choose(8)];
    const auto orders = order_lists<T>(n)[list];
    const auto count = static_cast<int>(orders.size());
    const auto x = random_data<T>(p * n), data = laid_out(rows ? SS_ROWS : SS_COLUMNS, p, x);
    std::vector<T> quantiles(p * count + 1, -12345), sorted(p * n, -12345);
    auto expected_quantiles = quantiles, expected_sorted = sorted;
    int item = 0;
    for (int j = 0; j < p; ++j) {
      if (masked && mask[j] == 0) continue;
      std::vector<T> column;
      for (int i = 0; i < n; ++i) column.push_back(x[i * p + j]);
      std::ranges::sort(column);
      for (int i = 0; (asked & SS_EST_QUANTILES) != 0 && i < count; ++i) {
        expected_quantiles[item * count + i] = quantile(column, orders[i]);
      }
      for (int i = 0; (asked & SS_EST_ORDER_STATS) != 0 && i < n; ++i) {
        expected_sorted[sorted_rows ? item * n + i : i * p + item] = column[i];
      }
      ++item;
    }
    const auto data_before = data;
    Task<T> task(p, n, rows ? SS_ROWS : SS_COLUMNS, data.data(), wide);
    task.set(SS_PARAM_QUANT_ORDER_COUNT, {count})
        .set(SS_PARAM_QUANT_ORDERS, orders.empty() ? data.data() : orders.data())
        .set(SS_PARAM_QUANTILES, quantiles)
        .set(SS_PARAM_ORDER_STATS, sorted)
        .set(SS_PARAM_ORDER_STATS_STORAGE, {sorted_rows ? SS_ROWS : SS_COLUMNS});
    if (masked) task.set_integers(SS_PARAM_VARIABLE_MASK, mask);
    EXPECT_EQ(Entries<T>::quantiles(task, asked, SS_METHOD_FAST, threads), SS_OK);
    EXPECT_EQ(quantiles, expected_quantiles);
    EXPECT_EQ(sorted, expected_sorted);
    EXPECT_EQ(data, data_before) << "the data have changed";
    if (this->HasFailure()) return;
  }
  orv_threads_set_count(0);
}

TYPED_TEST(EachPrecision, QuantileThreadsShareTenMebibytes) {
  using T = TypeParam;
  constexpr int64_t fitting = 0xa00000 / sizeof(T);
  const std::array<int64_t, 4> cases[] = {
      {5, 100, 8, 5},     {50, 100, 8, 8},        {5, 100, 1, 1},
      {5, 100, 0, 1},     {9, fitting / 3, 8, 3}, {9, fitting / 3 + 1, 8, 2},
      {9, fitting, 8, 1}, {9, fitting + 1, 8, 1}, {9, 3 * fitting, 8, 1}};
  Asked::run = false;
  for (const auto& [p, n, usable, expected] : cases) {
    const T x = 0;
    Asked::usable = static_cast<int32_t>(usable);
    Task<T> task(p, n, SS_ROWS, &x);
    EXPECT_EQ(Entries<T>::quantiles(task, 0, SS_METHOD_FAST, &Asked::services), SS_OK);
    EXPECT_EQ(Asked::items, p);
    EXPECT_EQ(Asked::threads, expected) << p << ' ' << n << ' ' << usable;
  }
}

TYPED_TEST(EachPrecision, WeightedQuantileTakesEachBranch) {
  using T = TypeParam;
  const T tiny = std::numeric_limits<T>::epsilon() / 2;
  const T infinity = std::numeric_limits<T>::infinity();
  const struct {
    const char* what;
    T q;
    std::vector<T> x, weights;
    T expected;
  } cases[] = {{"on the target, even", T(0.5), {4, 1, 3, 2}, {1, 1, 1, 1}, T(2.5)},
               {"on it, even, next without weight", T(0.5), {3, 1, 4, 2}, {0, 1, 2, 1}, 3},
               {"on it, even, none with weight above", 1, {1, 4, 2, 3}, {1, 0, 1, 0}, 3},
               {"on it, even, last", 1, {2, 1}, {1, 1}, 2},
               {"on it, odd", T(0.5), {3, 2, 1}, {2, 1, 1}, 2},
               {"above it, nothing below", T(0.5), {3, 1, 2}, {1, 5, 1}, 1},
               {"above it, odd, weights balanced", T(0.5), {3, 1, 2}, {1, 1, 1}, 2},
               {"above it, odd, weights balanced for a quarter", T(0.25), {1, 3, 2}, {1, 3, 4}, 2},
               {"above it, even, weights balanced", T(0.5), {3, 1, 2, 9}, {1, 1, 1, 0}, T(1.5)},
               {"above it, odd, not balanced", T(0.375), {1, 3, 2}, {1, 3, 4}, T(1.5)},
               {"above it, even", T(0.5), {8, 4, 2, 1}, {1, 4, 2, 1}, T(2.5)},
               {"above it, none with weight between", T(0.5), {1, 2, 3, 4}, {1, 0, 0, 2}, T(1.75)},
               {"no weights, odd", T(0.5), {3, 1, 2}, {0, 0, 0}, 1},
               {"no weights, even", T(0.5), {3, 1}, {0, 0}, 2},
               {"one observation", T(0.5), {7}, {3}, 7},
               {"infinite below", T(0.375), {-infinity, 3, 2}, {3, 1, 4}, -infinity},
               {"infinite on both sides", T(0.375), {infinity, 1, infinity}, {3, 1, 4}, infinity},
               {"sum rounded below the target", 1, {2, 3, 1, 4}, {tiny, tiny, 1, 0}, 3}};
  for (const auto& c : cases) {
    std::vector<T> x;  // of two variables, the second one twice the first
    for (const T v : c.x) x.insert(x.end(), {v, 2 * v});
    for (const int64_t layout : {SS_ROWS, SS_COLUMNS}) {
      const std::vector<T> data = laid_out(layout, 2, x);
      std::vector<T> result(3, -1);
      Task<T> task(2, std::ssize(c.x), layout, data.data());
      task.set(SS_PARAM_WEIGHTS, c.weights)
          .set(SS_PARAM_QUANT_ORDERS, &c.q)
          .set(SS_PARAM_QUANTILES, result);
      EXPECT_EQ(Entries<T>::weighted_quantile(task, 0, 0, nullptr), SS_OK);
      EXPECT_EQ(result, (std::vector<T>{c.expected, 2 * c.expected, -1})) << c.what;
    }
  }
}

/// Weights must stay with their observations through the sort, from whatever order.
TYPED_TEST(EachPrecision, WeightsMoveWithTheirKeys) {
  using T = TypeParam;
  const T q = T(0.375);
  for (const int n : {8, 9, 64, 65, 300, 1001}) {
    std::vector<T> results;
    for (const int step : {1, n - 1, 7919}) {
      std::vector<T> x, weights;
      for (int i = 0; i < n; ++i) {
        x.push_back(static_cast<T>(step * i % n / 3));
        weights.push_back(static_cast<T>(step * i % n / 3 % 4));
      }
      Task<T> task(1, n, SS_ROWS, x.data());
      task.set(SS_PARAM_WEIGHTS, weights).set(SS_PARAM_QUANT_ORDERS, &q);
      task.set(SS_PARAM_QUANTILES, &results.emplace_back());
      EXPECT_EQ(Entries<T>::weighted_quantile(task, 0, 0, nullptr), SS_OK);
    }
    EXPECT_EQ(results, std::vector<T>(3, results[0])) << n;
  }
}

}  // namespace
