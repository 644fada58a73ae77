// SPDX-License-Identifier: MIT
// Quantiles of streams: answers within the promised ranks, whatever the order of the data and
// however they are cut into blocks, and a summary that is small and lasts.
#include <algorithm>
#include <cmath>
#include <numeric>

#include "support.hpp"

using namespace orv_test;

namespace {

template <class T>
constexpr auto stream_quantiles = sizeof(T) == sizeof(double) ? _zokdSSStreamQuantiles
                                                              : _zoksSSStreamQuantiles;

enum Order { ascending, descending, organ_pipe, equal, random_order, few_values, near_a_billion };

template <class T>
std::vector<T> values(Order order, int n) {
  std::mt19937 random(7);
  std::vector<T> x(n);
  for (int i = 0; i < n; ++i) {
    const auto place = static_cast<T>(i), uniform = static_cast<T>(random() >> 8);
    const T all[] = {place,
                     -place,
                     std::min(place, n - place),
                     3,
                     uniform,
                     static_cast<T>(random() % 7),
                     T(1e9) + static_cast<T>(random() % 512)};
    x[i] = all[order];
  }
  return x;
}

/// A stream of p variables, of which the mask leaves out the second, if there is one.
template <class T>
class Stream {
 public:
  Stream(int p, T epsilon, const std::vector<T>& orders)
      : p_(p), epsilon_(epsilon), orders_(orders), task_(p, 1, SS_COLUMNS, nullptr) {
    std::vector<int64_t> mask(p, 1);
    if (p > 1) mask[1] = 0;
    task_.set_integers(SS_PARAM_VARIABLE_MASK, mask);
    answers_.resize((p > 1 ? p - 1 : 1) * orders.size());
    task_.set(SS_PARAM_STREAM_PARAMS, &epsilon_).set(SS_PARAM_STREAM_PARAM_COUNT, {1});
    task_.set(SS_PARAM_STREAM_ORDERS, orders_);
    task_.set_integers(SS_PARAM_STREAM_ORDER_COUNT, {static_cast<int64_t>(orders.size())});
    task_.set(SS_PARAM_STREAM_QUANTILES, answers_);
  }
  SSTask* task() const { return task_; }

  /// Observations in columns are turned into the layout.
  int32_t feed(const T* x, int64_t n, int64_t layout = SS_COLUMNS,
               uint64_t method = SS_METHOD_STREAM_ADD) {
    const std::vector<T> block = laid_out(layout, p_, std::vector<T>(x, x + n * p_));
    task_.set(SS_PARAM_OBSERVATION_COUNT, {n}).set(SS_PARAM_OBSERVATION_STORAGE, {layout});
    if (n > 0) task_.set(SS_PARAM_OBSERVATIONS, block);
    return stream_quantiles<T>(task_, 0, method,
                               n < 100 ? orv_threads_serial() : orv_threads_pool());
  }
  const std::vector<T>& ask() {
    EXPECT_EQ(feed(nullptr, 0, SS_ROWS, SS_METHOD_STREAM_QUERY | SS_METHOD_STREAM_ADD), SS_OK);
    return answers_;
  }

 private:
  int p_;
  T epsilon_;
  std::vector<T> orders_, answers_;
  Task<T> task_;
};

/// By how many ranks the worst answer is off.
template <class T>
double worst_rank(std::vector<T> x, const std::vector<T>& orders, const T* answers) {
  std::ranges::sort(x);
  double worst = 0;
  for (size_t i = 0; i < orders.size(); ++i) {
    const auto [low, high] = std::equal_range(x.begin(), x.end(), answers[i]);
    if (low == high) return INFINITY;  // no value of the data
    const double wanted = static_cast<double>(orders[i]) * static_cast<double>(x.size());
    const auto first = static_cast<double>(low - x.begin() + 1);
    const auto last = static_cast<double>(high - x.begin());
    worst = std::max({worst, first - wanted, wanted - last});
  }
  return worst;
}

template <class T>
std::vector<T> evenly_spaced_orders(int count) {
  std::vector<T> orders;
  for (int i = 0; i <= count; ++i) orders.push_back(static_cast<T>(i) / static_cast<T>(count));
  return orders;
}

TYPED_TEST(EachPrecision, StreamQuantilesKeepTheirRankPromiseInEverySplit) {
  using T = TypeParam;
  const std::vector<T> orders = evenly_spaced_orders<T>(200);
  const int p = 3;
  double worst = 0;
  for (const double epsilon : {1., .75, .43, .3, .1, .03, .007, .001}) {
    for (const int n : {1, 2, 7, 64, 333, 938, 5000, 40000}) {
      for (const Order order :
           {ascending, descending, organ_pipe, equal, random_order, few_values, near_a_billion}) {
        SCOPED_TRACE(testing::Message() << "epsilon " << epsilon << " n " << n << " " << order);
        const std::vector<T> first = values<T>(order, n);
        std::vector<T> last = first, x;
        std::ranges::shuffle(last, std::mt19937(2));
        for (int i = 0; i < n; ++i) x.insert(x.end(), {first[i], T(-1), last[i]});
        std::vector<T> of_one_block;
        for (const int most : {n, n / 2 + 1, 777, 1}) {
          if (most == 1 && n > 5000) continue;
          Stream<T> stream(p, static_cast<T>(epsilon), orders);
          std::mt19937 random(3);
          for (int done = 0, count; done < n; done += count) {
            count = std::min(n - done, most < n && most > 1 ? 1 + int(random() % most) : most);
            const bool rows = random() % 2 != 0;
            const uint64_t method = random() % 16 ? SS_METHOD_STREAM_ADD : SS_METHOD_STREAM_QUERY;
            ASSERT_EQ(stream.feed(&x[done * p], count, rows ? SS_ROWS : SS_COLUMNS, method), SS_OK);
          }
          const std::vector<T> answers = stream.ask();
          if (most == n) {
            const double off = std::max(worst_rank(first, orders, answers.data()),
                                        worst_rank(last, orders, &answers[orders.size()]));
            ASSERT_LE(off, std::max(1.0, epsilon * n));
            if (epsilon * n > 5) worst = std::max(worst, off / (epsilon * n));
            of_one_block = answers;
          }
          ASSERT_EQ(answers, of_one_block) << "blocks of up to " << most;
        }
      }
    }
  }
  EXPECT_GT(worst, 0.2);  // else far more is kept than is needed
}

// The answer lies at the nearest rank in whole ranks, the first of several.
TYPED_TEST(EachPrecision, StreamQuantilesOfFewValuesAreExact) {
  using T = TypeParam;
  const std::vector<T> orders = {0, T(0.05), T(0.25), T(0.5), T(0.75), T(0.99), 1};
  Stream<T> stream(1, T(0.01), orders);
  const T unseen = stream.ask()[0];
  EXPECT_EQ(unseen, 0);  // as it was
  const std::vector<T> x = {50, 30, 80, 10, 70, 20, 100, 40, 90, 60};
  ASSERT_EQ(stream.feed(x.data(), 10), SS_OK);
  EXPECT_EQ(stream.ask(), (std::vector<T>{10, 10, 20, 50, 70, 90, 100}));
}

TYPED_TEST(EachPrecision, StreamQuantilesTakeCareOfWhatChangesBetweenCalls) {
  using T = TypeParam;
  const std::vector<T> orders = {T(0.5)}, x(30, T(4));
  Stream<T> stream(3, T(0.1), orders);
  ASSERT_EQ(stream.feed(x.data(), 10), SS_OK);
  const auto edit = [&](int64_t parameter, std::vector<int32_t> integers) {
    static std::vector<std::vector<int32_t>> kept;
    kept.push_back(std::move(integers));
    ASSERT_EQ(__zokiSSEditTask(stream.task(), parameter, kept.back().data()), SS_OK);
  };
  const struct {
    int32_t p;
    std::vector<int32_t> mask;
    int32_t status;
  } changes[] = {{3, {1, 1, 1}, -4004}, {3, {0, 0, 0}, -4004}, {0, {1, 0, 1}, -4004},
                 {2, {1, 0, 1}, -4001}, {9, {1, 0, 1}, -4001}, {3, {0, 0, 1}, SS_OK}};
  for (const auto& change : changes) {
    edit(SS_PARAM_DIMENSION, {change.p});
    edit(SS_PARAM_VARIABLE_MASK, change.mask);
    EXPECT_EQ(stream.feed(x.data(), 1), change.status) << change.p;
  }
  EXPECT_EQ(stream.ask(), (std::vector<T>{4, 4}));  // who takes part was told in the first call
  edit(SS_PARAM_DIMENSION, {1000000});              // and what is released then, too
}

// Only NaN's own variable suffers, and nothing hangs.
TEST(StreamQuantiles, ANaNSpoilsItsVariableAlone) {
  const std::vector<double> orders = {0, 0.5, 1};
  std::vector<double> x;
  for (int i = 0; i < 20000; ++i) x.insert(x.end(), {i % 3 == 0 ? NAN : 1.0, 0.0, double(i)});
  Stream<double> stream(3, 0.01, orders);
  ASSERT_EQ(stream.feed(x.data(), 20000), SS_OK);
  EXPECT_NEAR(stream.ask()[4], 10000, 200);
}

}  // namespace
