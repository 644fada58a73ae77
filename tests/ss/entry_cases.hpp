// What each entry looks for, in its order: a list from which tests make tasks, right and wrong
// ones.
#pragma once

#include <algorithm>
#include <limits>

#include "support.hpp"

namespace orv_test {

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
const int64_t none = 0, one = 1, two = 2, three = 3, negative = -1, rows = SS_ROWS,
              no_layout = 0x40000, beyond = std::numeric_limits<int64_t>::max(),
              more_than_sorters_count = int64_t{1} << 31;
const int64_t numbers_of_groups[] = {0, 1, 0}, no_groups[] = {0, -1, 0}, wanted[] = {1, 1},
              twice[] = {1, 2}, roles[] = {1, -1}, all_given[] = {-1, -1}, none_given[] = {1, 0};

/// Integers that are right; another field takes any numbers.
const std::pair<const int64_t*, std::vector<size_t>> right_integers[] = {
    {&one, {F(quant_order_count)}},
    {&two, {F(dimension)}},
    {&three, {F(observation_count)}},
    {&rows, {F(observation_storage), F(order_stats_storage)}},
    {&none, {F(cov_storage), F(cor_storage), F(pooled_cov_storage), F(group_cov_storage)}},
    {&none, {F(partial_cov_storage), F(partial_cor_storage)}},
    {numbers_of_groups, {F(group_indices)}},
    {wanted, {F(group_output_indices)}},
    {roles, {F(partial_index_array)}}};

const Checks layout = {{F(observation_storage), -4003, {&no_layout}}};
const Check dimension{F(dimension), -4001, {nullptr, &none, &negative, &beyond}},
    count{F(observation_count), -4002, {nullptr, &none, &negative, &beyond}},
    too_many{F(observation_count), -4002, {&more_than_sorters_count}}, x{F(observations), -4032};
const Checks data = {{method, -4029}, dimension, count, x},
             sortable = {{method, -4029}, dimension, count, too_many, x};

const Check mean{F(mean), -4006}, raw2{F(raw_moment_2), -4007}, raw3{F(raw_moment_3), -4008},
    raw4{F(raw_moment_4), -4009}, c2{F(central_moment_2), -4010}, c3{F(central_moment_3), -4011},
    c4{F(central_moment_4), -4012}, kurtosis{F(kurtosis), -4013}, skewness{F(skewness), -4014},
    low{F(minimum), -4015}, high{F(maximum), -4016}, variation{F(variation), -4017},
    cov{F(cov), -4018}, cor{F(cor), -4019};

const std::pair<uint64_t, Checks> basic_needs[] = {
    {SS_EST_MEAN, {mean}},
    {SS_EST_RAW2, {raw2}},
    {SS_EST_RAW3, {raw3}},
    {SS_EST_RAW4, {raw4}},
    {SS_EST_CEN2, {mean, raw2, c2}},
    {SS_EST_CEN3, {mean, raw2, raw3, c3}},
    {SS_EST_CEN4, {mean, raw2, raw3, raw4, c4}},
    {SS_EST_KURTOSIS, {c2, c4, kurtosis}},
    {SS_EST_SKEWNESS, {c2, c3, skewness}},
    {SS_EST_VARIATION, {mean, c2, variation}},
    {SS_EST_COV, {mean, cov}},
    {SS_EST_COR, {mean, cor}},
    {SS_EST_COR | SS_EST_KURTOSIS | SS_EST_COV, {mean, c2, c4, cov, cor, kurtosis}}};

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
const Checks bad_groups = {{F(group_indices), -4038, {no_groups}}},
             bad_choice = {{F(group_output_indices), -4038, {twice}}};
const Checks partial = {{F(cor), -4018},         {F(cor_storage), -4044},
                        {F(cov), -4045},  // the correlation takes its place
                        {F(cov_storage), -4044}, {F(partial_index_array), -4045},
                        {F(partial_cov), -4046}, {F(partial_cov_storage), -4044},
                        {F(partial_cor), -4047}, {F(partial_cor_storage), -4044},
                        {method, -4029},         dimension};

template <class T>
std::vector<Case> all_cases() {
  static const T too_low = T(-0.01), too_high = T(1.01), nan = std::numeric_limits<T>::quiet_NaN();
  static const T indefinite[] = {2, 1, 1, -2}, some[] = {1, 1, 1};
  static T results[2];
  const Checks quantiles = {{F(quantiles), -4023},
                            {F(quant_orders), -4021},
                            {F(quant_order_count), -4022, {nullptr, &negative}},
                            {F(quant_orders), -4022, {&too_low, &too_high, &nan}}};
  const Checks bad_roles = {{F(partial_index_array), -4073, {all_given, none_given}},
                            {F(cov), -5010, {indefinite}}};
  const Checks unchecked = {
      {F(weights), 0, {some}}, {F(quant_orders), 0, {some}}, {F(quantiles), 0, {results}}};
  constexpr uint64_t fast = SS_METHOD_FAST, one_pass = SS_METHOD_ONE_PASS, either = fast | one_pass;
  constexpr uint64_t least = SS_EST_MIN, largest = SS_EST_MAX, groups = SS_EST_GROUP;
  constexpr uint64_t orders = SS_EST_QUANTILES, sorted_data = SS_EST_ORDER_STATS;
  constexpr uint64_t both_partial = SS_EST_PARTIAL_COV | SS_EST_PARTIAL_COR, pool = SS_EST_POOLED;
  using E = Entries<T>;
  std::vector<Case> cases = {
      {E::minmax, least, either, {layout, {low}, data}},
      {E::minmax, largest, either, {layout, {high}, data}},
      {E::minmax, least | largest, either, {layout, {low, high}, data}},
      {E::quantiles, orders, fast, {layout, quantiles, sortable}},
      {E::quantiles, sorted_data, fast, {layout, sorted, sortable}},
      {E::quantiles, orders | sorted_data, fast, {layout, quantiles, sorted, sortable}},
      {E::weighted_median, 0, 0, {{dimension, count, x}, unchecked}},
      {E::pooled_covariance, pool, one_pass, {grouped, pooled, data, bad_groups}},
      {E::pooled_covariance, groups, one_pass, {grouped, single, data, bad_groups, bad_choice}},
      {E::pooled_covariance, pool | groups, one_pass, {grouped, pooled, single, data, bad_groups}},
      {E::partial_covariance, both_partial, fast, {partial, bad_roles}}};
  for (const auto& [estimates, needs] : basic_needs) {
    cases.push_back({E::basic, estimates, either, {layout, needs, data}});
  }
  return cases;
}

/// A task that has what a case looks for, and nothing else; places for results have 16 elements.
template <class T>
class CaseTask {
 public:
  explicit CaseTask(const Case& c) : case_(c) {
    for (const Checks& some : c.checks) checks.insert(checks.end(), some.begin(), some.end());
    numbers_.assign(16 * checks.size(), T(0.5));
    std::memset(&task_, 0, sizeof task_);
    task_.int_is_64 = 1;
    for (size_t i = 0; i < checks.size(); ++i) set(checks[i].field, &numbers_[16 * i]);
    for (const auto& [integers, fields] : right_integers) {
      for (const size_t field : fields) {
        if (std::ranges::count(checks, field, &Check::field) > 0) set(field, integers);
      }
    }
    how = c.methods;
  }
  void set(size_t field, const void* address) {
    if (field == method) {
      how = ~case_.methods;
    } else {
      std::memcpy(reinterpret_cast<char*>(&task_) + field, &address, sizeof address);
    }
  }
  int32_t run(const SSThreadServices* services = orv_threads_serial()) {
    return case_.entry(&task_, case_.estimates, how, services);
  }

  Checks checks;
  uint64_t how;  // the method

 private:
  const Case& case_;
  std::vector<T> numbers_;
  SSTask task_;
};

#undef F

}  // namespace orv_test
