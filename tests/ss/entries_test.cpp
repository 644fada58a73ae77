// SPDX-License-Identifier: MIT
// What each entry looks for, in which order, and that it looks for nothing else; what tasks and
// statistics allocate, and what is left when it fails.
#include <algorithm>
#include <functional>
#include <limits>

#include "failing_allocator.hpp"
#include "support.hpp"

using namespace orv_test;

namespace {

/// A field that an entry looks at. Where it is wrong in one of these ways, the entry returns the
/// status.
struct Check {
  size_t field;
  int32_t status;
  std::vector<const void*> wrong = {nullptr};
};
using Checks = std::vector<Check>;
constexpr size_t method = ~size_t{0};  // in place of a field

struct Case {
  int32_t (*entry)(SSTask*, uint64_t, uint64_t, const SSThreadServices*);
  uint64_t estimates, methods;
  std::vector<Checks> checks;  // in their order
};

#define F(name) offsetof(SSTask, name)
const int64_t none = 0, one = 1, two = 2, three = 3, nine = 9, many = 2500, negative = -1,
              rows = SS_ROWS, columns = SS_COLUMNS, lower_packed = SS_MATRIX_LOWER_PACKED,
              no_layout = 0x40000, both_layouts = SS_ROWS | SS_COLUMNS,
              beyond = std::numeric_limits<int64_t>::max(),
              more_than_sorters_count = int64_t{1} << 31;
std::vector<int64_t> groups_with(int64_t second) {
  std::vector<int64_t> groups(many);
  groups[1] = second;
  return groups;
}
const std::vector<int64_t> two_groups = groups_with(1), no_groups = groups_with(-1),
                           countless = groups_with(INT32_MAX);
const int64_t wanted[] = {1, 1}, twice[] = {1, 2}, roles[] = {1, -1}, all_given[] = {-1, -1},
              none_given[] = {1, 0};

/// Integers that are right; another field takes any numbers.
const std::pair<const int64_t*, std::vector<size_t>> right_integers[] = {
    {&one, {F(quant_order_count), F(stream_order_count), F(stream_param_count)}},
    {&two, {F(dimension)}},
    {&many, {F(observation_count)}},
    {&rows, {F(observation_storage), F(order_stats_storage)}},
    {&lower_packed, {F(partial_cov_storage), F(group_cov_storage), F(parametrized_cor_storage)}},
    {&none, {F(cor_storage), F(partial_cor_storage), F(pooled_cov_storage)}},
    {two_groups.data(), {F(group_indices)}},
    {wanted, {F(group_output_indices)}},
    {roles, {F(partial_index_array)}}};

const Checks layout = {{F(observation_storage), -4003, {&no_layout}}};
const Check dimension{F(dimension), -4001, {nullptr, &none, &negative, &beyond}},
    count{F(observation_count), -4002, {nullptr, &none, &negative, &beyond}},
    too_many{F(observation_count), -4002, {&more_than_sorters_count}},
    observed{F(observations), -4032};
const Checks data = {{method, -4029}, dimension, count, observed},
             sortable = {{method, -4029}, dimension, count, too_many, observed};

const Check mean{F(mean), -4006}, raw2{F(raw_moment_2), -4007}, raw3{F(raw_moment_3), -4008},
    raw4{F(raw_moment_4), -4009}, c2{F(central_moment_2), -4010}, c3{F(central_moment_3), -4011},
    c4{F(central_moment_4), -4012}, kurtosis{F(kurtosis), -4013}, skewness{F(skewness), -4014},
    low{F(minimum), -4015}, high{F(maximum), -4016}, variation{F(variation), -4017},
    cov{F(cov), -4018}, cor{F(cor), -4019};

const Checks sorted = {{F(order_stats), -4024},
                       {F(order_stats_storage), -4044},
                       {F(order_stats_storage), -4003, {&no_layout}}};
const Checks grouped = {{F(observation_storage), -4003, {&no_layout}}, {F(group_indices), -4030}};
const Checks pooled = {
    {F(pooled_cov_storage), -4044}, {F(pooled_cov), -4034}, {F(pooled_mean), -4035}};
const Checks single = {{F(group_cov_storage), -4044},
                       {F(group_output_indices), -4030},
                       {F(group_cov), -4036},
                       {F(group_means), -4037}};
const Checks bad_groups = {{F(group_indices), -4038, {no_groups.data()}}},
             too_many_groups = {{F(group_indices), SS_NO_MEMORY, {countless.data()}}},
             bad_choice = {{F(group_output_indices), -4038, {twice}}};
// Where there is a correlation, no covariance is looked for.
const Checks partial = {{F(cor), -4018},
                        {F(cor_storage), -4044},
                        {F(cov), -4045},
                        {F(cov_storage), -4044},
                        {F(partial_index_array), -4045},
                        {F(partial_cov), -4046},
                        {F(partial_cov_storage), -4044},
                        {F(partial_cor), -4047},
                        {F(partial_cor_storage), -4044},
                        {method, -4029},
                        dimension};

const Check cor_storage{F(cor_storage), -4044}, to{F(parametrized_cor), -4071},
    to_storage{F(parametrized_cor_storage), -4044};
const Checks parametrized = {dimension,
                             cor,
                             cor_storage,
                             {F(cor_storage), -4003, {&rows, &negative, &three}},
                             to,
                             to_storage,
                             {F(parametrized_cor_storage), -4003, {&three}},
                             {method, -4029}};
const Checks detected = {{F(dimension), -4001, {nullptr, &none, &negative, &beyond}},
                         {F(observation_count), -4002, {nullptr, &nine}},
                         {F(observation_storage), -4003, {nullptr, &no_layout, &both_layouts}},
                         {F(outlier_weights), -4041},
                         {method, -4029},
                         {F(observation_count), -4002, {&beyond}},
                         observed};

/// Streaming quantiles, and the end of their summary.
template <class T>
int32_t stream_and_end(SSTask* task, uint64_t estimates, uint64_t how,
                       const SSThreadServices* services) {
  const auto entry = sizeof(T) == sizeof(double) ? _zokdSSStreamQuantiles : _zoksSSStreamQuantiles;
  const int32_t status = entry(task, estimates, how, services);
  while (task->cleanup_count > 0) task->cleanup_hooks[--task->cleanup_count](task);
  EXPECT_EQ(task->stream_state, nullptr);
  return status;
}

template <class T>
std::vector<Case> all_cases() {
  static const T too_low = T(-0.01), too_high = T(1.01), nan = std::numeric_limits<T>::quiet_NaN(),
                 indefinite[] = {2, 1, -2};
  const Checks quantiles = {{F(quantiles), -4023},
                            {F(quant_orders), -4021},
                            {F(quant_order_count), -4022, {nullptr, &negative}},
                            {F(quant_orders), -4022, {&too_low, &too_high, &nan}}};
  const Checks bad_roles = {{F(partial_index_array), -4073, {all_given, none_given}},
                            {F(cov), -5010, {indefinite}}};
  static const T zero = 0, above_one = T(1.01);
  const Checks streaming = {{F(observation_count), -4002, {nullptr, &negative}},
                            {F(observations), -4032},
                            {F(observation_storage), -4044},
                            {F(observation_storage), -4003, {&no_layout}},
                            {F(stream_quantiles), -4070},
                            {F(stream_orders), -4068},
                            {F(stream_order_count), -4069, {nullptr, &negative}},
                            {F(stream_param_count), -4064},
                            {F(stream_param_count), -4066, {&two, &none}},
                            {F(stream_orders), -4069, {&too_low, &too_high, &nan}},
                            {F(stream_params), -4065},
                            {method, -4029},
                            {F(stream_params), -4067, {&zero, &above_one, &nan}},
                            dimension,
                            {F(observation_count), -4002, {&beyond}}};
  const Checks unchecked = {{F(weights), 0, {}}, {F(quant_orders), 0, {}}, {F(quantiles), 0, {}}};
  constexpr uint64_t fast = SS_METHOD_FAST, one_pass = SS_METHOD_ONE_PASS, either = fast | one_pass;
  constexpr uint64_t least = SS_EST_MIN, largest = SS_EST_MAX, groups = SS_EST_GROUP;
  constexpr uint64_t orders = SS_EST_QUANTILES, sorted_data = SS_EST_ORDER_STATS;
  constexpr uint64_t both_partial = SS_EST_PARTIAL_COV | SS_EST_PARTIAL_COR, pool = SS_EST_POOLED;
  constexpr uint64_t several = SS_EST_COR | SS_EST_KURTOSIS | SS_EST_COV;
  using E = Entries<T>;
  return {
      {E::minmax, least, either, {layout, {low}, data}},
      {E::minmax, largest, either, {layout, {high}, data}},
      {E::minmax, least | largest, either, {layout, {low, high}, data}},
      {E::quantiles, orders, fast, {layout, quantiles, sortable}},
      {E::quantiles, sorted_data, fast, {layout, sorted, sortable}},
      {E::quantiles, orders | sorted_data, fast, {layout, quantiles, sorted, sortable}},
      {E::weighted_quantile, 0, 0, {{dimension, count, observed}, unchecked}},
      {stream_and_end<T>, 0, SS_METHOD_STREAM_QUERY | SS_METHOD_STREAM_ADD, {streaming}},
      {E::pooled_covariance, pool, one_pass, {grouped, pooled, data, too_many_groups, bad_groups}},
      {E::pooled_covariance, groups, one_pass, {grouped, single, data, bad_groups, bad_choice}},
      {E::pooled_covariance, pool | groups, one_pass, {grouped, pooled, single, data, bad_groups}},
      {E::partial_covariance, both_partial, fast, {partial, bad_roles}},
      {E::parametrize, 0, SS_METHOD_SPECTRAL_DECOMP, {parametrized}},
      {E::outliers, 0, SS_METHOD_BACON, {detected}},
      {E::basic, SS_EST_MEAN, either, {layout, {mean}, data}},
      {E::basic, SS_EST_RAW2, either, {layout, {raw2}, data}},
      {E::basic, SS_EST_RAW3, either, {layout, {raw3}, data}},
      {E::basic, SS_EST_RAW4, either, {layout, {raw4}, data}},
      {E::basic, SS_EST_CEN2, either, {layout, {mean, raw2, c2}, data}},
      {E::basic, SS_EST_CEN3, either, {layout, {mean, raw2, raw3, c3}, data}},
      {E::basic, SS_EST_CEN4, either, {layout, {mean, raw2, raw3, raw4, c4}, data}},
      {E::basic, SS_EST_KURTOSIS, either, {layout, {c2, c4, kurtosis}, data}},
      {E::basic, SS_EST_SKEWNESS, either, {layout, {c2, c3, skewness}, data}},
      {E::basic, SS_EST_VARIATION, either, {layout, {mean, c2, variation}, data}},
      {E::basic, SS_EST_COV, either, {layout, {mean, cov}, data}},
      {E::basic, SS_EST_COR, either, {layout, {mean, cor}, data}},
      {E::basic, several, either, {layout, {mean, c2, c4, cov, cor, kurtosis}, data}}};
}

/// Lets each allocation of a call fail in turn, which it must report and leave nothing behind, and
/// tells how many there are.
int expect_failures(const std::function<int32_t()>& run, int32_t expected = SS_NO_MEMORY) {
  run();  // OpenMP asks once, for as long as the thread lives
  for (int failing = 1;; ++failing) {
    watch_allocations(failing);
    const int32_t status = run();
    const Allocations seen = seen_allocations();
    EXPECT_EQ(status, failing <= seen.asked ? expected : SS_OK) << failing;
    EXPECT_EQ(seen.open, 0) << failing;
    if (failing > seen.asked) return seen.asked;
  }
}

TEST(Allocation, TaskIsNullWhenThereIsNoMemory) {
  const int32_t p = 1;
  SSTask other, *task = &other;
  watch_allocations(1);
  EXPECT_EQ(__zokdSSNewTask(&task, &p, nullptr, nullptr, nullptr, nullptr, nullptr, 0),
            SS_NO_MEMORY);
  EXPECT_EQ(seen_allocations().asked, 1);
  EXPECT_EQ(task, nullptr);
}

/// A task that has what a case looks for, and nothing else; places have room for all data.
template <class T>
struct CaseTask {
  explicit CaseTask(const Case& c) : how(c.methods) {
    for (const Checks& some : c.checks) checks.insert(checks.end(), some.begin(), some.end());
    for (size_t k = 0; k < 2 * many * checks.size(); ++k) {  // spread over (0, 1)
      numbers.push_back(static_cast<T>((k * 7919 % 1009 + 0.5) / 1009));
    }
    std::memset(&task, 0, sizeof task);
    task.int_is_64 = 1;
    for (size_t i = 0; i < checks.size(); ++i) set(checks[i].field, &numbers[2 * many * i]);
    for (const auto& [integers, fields] : right_integers) {
      for (const size_t field : fields) {
        if (std::ranges::count(checks, field, &Check::field) > 0) set(field, integers);
      }
    }
  }
  void set(size_t field, const void* address) {
    if (field == method) return;
    std::memcpy(reinterpret_cast<char*>(&task) + field, &address, sizeof address);
  }
  Checks checks;
  std::vector<T> numbers;
  SSTask task;
  uint64_t how;  // the method
};

TYPED_TEST(EachPrecision, EntriesCheckInTheirOrderAndLeaveNothing) {
  static const int64_t selected[] = {1, 0};
  SSThreadServices in_turn = *orv_threads_serial();  // two threads, one after the other on this one
  in_turn.max_threads = [] { return int32_t{2}; };
  in_turn.run_threads = [](int32_t threads, void* args, SSItemFunction function) {
    for (int32_t t = 0; t < threads; ++t) function(t, 0, threads, args);
  };
  for (const Case& c : all_cases<TypeParam>()) {
    for (int way = 0; way < 8; ++way) {
      SCOPED_TRACE(testing::Message() << "estimates " << c.estimates << " way " << way);
      Choices choose{way};
      const bool masked = choose(2), weighted = choose(2), by_columns = choose(2);
      CaseTask<TypeParam> made(c);
      made.set(F(cov_storage), &lower_packed);
      if (by_columns) made.set(F(observation_storage), &columns);
      if (masked) made.set(F(variable_mask), selected);
      if (weighted) made.set(F(weights), made.numbers.data());
      const auto run = [&] { return c.entry(&made.task, c.estimates, made.how, &in_turn); };
      for (const uint64_t method_bit : {uint64_t{SS_METHOD_FAST}, ~uint64_t{SS_METHOD_FAST}}) {
        made.how = c.methods & method_bit;
        if (made.how == 0 && c.methods != 0) continue;
        const bool reports = c.entry != Entries<TypeParam>::quantiles;  // see below
        const int asked = expect_failures(run, reports ? SS_NO_MEMORY : SS_OK);
        if (c.estimates != SS_EST_COV) continue;
        // Sums, matrix, threads; copies under a mask; scaled data of each thread.
        EXPECT_GE(asked, 3 + masked + (weighted && made.how == SS_METHOD_FAST ? 2 : 0));
      }
      made.how = c.methods;
      // From the last check on one thing more is wrong at a time, and is told before the others.
      for (size_t i = made.checks.size(); i-- > 0;) {
        for (const void* wrong : made.checks[i].wrong) {
          made.set(made.checks[i].field, wrong);
          if (made.checks[i].field == method) made.how = ~c.methods;
          watch_allocations();
          EXPECT_EQ(run(), made.checks[i].status) << "check " << i;
          EXPECT_EQ(seen_allocations().open, 0) << "check " << i;
        }
      }
    }
  }
}

#undef F

// Without memory these report nothing, and compute nothing.
TYPED_TEST(EachPrecision, QuantilesWithoutMemory) {
  using T = TypeParam;
  const T x[] = {3, 5, 1, 6, 2, 4}, median = T(0.5);
  for (const auto& expected : {std::vector<T>{2, 5, 1, 4, 2, 5, 3, 6}, std::vector<T>(8, -1)}) {
    std::vector<T> results(8, -1);
    Task<T> task(2, 3, SS_COLUMNS, x);
    task.set(SS_PARAM_QUANT_ORDER_COUNT, {1})
        .set(SS_PARAM_QUANT_ORDERS, &median)
        .set(SS_PARAM_QUANTILES, results)
        .set(SS_PARAM_ORDER_STATS, &results[2])
        .set(SS_PARAM_ORDER_STATS_STORAGE, {SS_COLUMNS});
    watch_allocations(expected[0] < 0 ? 1 : 0);
    EXPECT_EQ(Entries<T>::quantiles(task, SS_EST_QUANTILES | SS_EST_ORDER_STATS, SS_METHOD_FAST,
                                    orv_threads_serial()),
              SS_OK);
    EXPECT_EQ(seen_allocations().bytes, 3 * sizeof(T) + 2 * sizeof(int32_t));
    EXPECT_EQ(results, expected);
  }
}

TYPED_TEST(EachPrecision, DistancesAndOutliersLeaveNothing) {
  using T = TypeParam;
  constexpr int p = 1025, n = 5 * p;
  std::vector<T> x(p * n), centre(p), inverse(p * p), distances(2), weights(n);
  for (size_t k = 0; k < x.size(); ++k) x[k] = static_cast<T>(k * 7919 % 1009);
  const int64_t first = 0, end = 2;
  Task<T> many_variables(p, n, SS_ROWS, x.data(), true);
  SSTask* const record = many_variables;
  const void* const words[] = {&first,           &end,    centre.data(), inverse.data(),
                               distances.data(), nullptr, nullptr,       nullptr};
  std::memcpy(record->mahalanobis_block, words, sizeof words);
  EXPECT_EQ(expect_failures([&] { return Entries<T>::mahalanobis(many_variables); }), 1);

  x[77] = std::numeric_limits<T>::infinity();  // a copy of the others is made
  Task<T> outliers(2, n, SS_COLUMNS, x.data());
  outliers.set(SS_PARAM_OUTLIER_WEIGHTS, weights);
  const auto detect = [&] {
    return Entries<T>::outliers(outliers, 0, SS_METHOD_BACON, orv_threads_serial());
  };
  EXPECT_GE(expect_failures(detect), 4);
  EXPECT_EQ(weights[38], 0);
}

// A small epsilon costs memory when the stream has become long, and no more than is needed.
TEST(Allocation, StreamSummaries) {
  for (const auto& [epsilon, n, most_bytes] :
       {std::tuple(1e-6, 1, 10000.0), std::tuple(1e-10, 1000, 50000.0),
        std::tuple(1e-6, 100000, 3e6), std::tuple(1e-3, 1000000, 4e6)}) {
    const std::vector<double> x(n, 1.0);
    const double order = 0.5;
    double answer = 0;
    Task<double> task(1, n, SS_COLUMNS, x.data());
    task.set(SS_PARAM_STREAM_PARAMS, &epsilon).set(SS_PARAM_STREAM_PARAM_COUNT, {1});
    task.set(SS_PARAM_STREAM_ORDERS, &order).set(SS_PARAM_STREAM_ORDER_COUNT, {1});
    task.set(SS_PARAM_STREAM_QUANTILES, &answer);
    watch_allocations();
    EXPECT_EQ(_zokdSSStreamQuantiles(task, 0, SS_METHOD_STREAM_ADD, orv_threads_serial()), SS_OK);
    EXPECT_LT(static_cast<double>(seen_allocations().bytes), most_bytes) << epsilon << " " << n;
  }
}

// No more threads have sums of their own than there are groups.
TEST(Allocation, SumsOfGroups) {
  static int32_t usable;
  SSThreadServices services = *orv_threads_serial();
  services.max_threads = [] { return usable; };
  std::vector<double> x(33), results(11 * 11);
  Task<double> task(11, 3, SS_COLUMNS, x.data());
  task.set(SS_PARAM_POOLED_MEAN, results).set(SS_PARAM_POOLED_COV, results);
  task.set(SS_PARAM_POOLED_COV_STORAGE, {0}).set(SS_PARAM_GROUP_INDICES, {0, 1, 1});
  const auto bytes = [&](int32_t threads) {
    usable = threads;
    watch_allocations();
    EXPECT_EQ(_zokdSSPooledCovariance(task, SS_EST_POOLED, SS_METHOD_ONE_PASS, &services), SS_OK);
    return seen_allocations().bytes;
  };
  EXPECT_EQ(bytes(0), bytes(1));
  EXPECT_LT(bytes(1), bytes(2));
  EXPECT_EQ(bytes(2), bytes(100));
}

}  // namespace
