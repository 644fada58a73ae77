// Tasks: what constructors check, which field each parameter sets, what grouped editors leave
// alone.
#include <cstring>
#include <map>
#include <set>
#include <tuple>

#include "orv/zok.h"
#include "support.hpp"

namespace orv_test {
namespace {

/// A record of zeros, between its fields too.
const SSTask empty = [] {
  SSTask task;
  std::memset(&task, 0, sizeof task);
  return task;
}();

template <class T>
class TaskTest : public testing::Test {};
TYPED_TEST_SUITE(TaskTest, Precisions);

TYPED_TEST(TaskTest, ConstructorsCheckInOrder) {
  static const int64_t one = 1, zero = 0, minus = -1, high = int64_t{1} << 32, rows = SS_ROWS,
                       both = SS_ROWS | SS_COLUMNS;
  const TypeParam x = 0;
  const struct {
    const char* what;
    const int64_t *p, *n, *layout;
    const TypeParam* data;
    int32_t status;
  } cases[] = {
      {"no dimension", nullptr, nullptr, nullptr, &x, SS_BAD_DIMENSION},
      {"dimension 0", &zero, &one, &rows, &x, SS_BAD_DIMENSION},
      {"negative dimension", &minus, &one, &rows, &x, SS_BAD_DIMENSION},
      {"storage missing, count bad", &one, &zero, nullptr, &x, SS_NULL_STORAGE},
      {"storage unknown, count bad", &one, &zero, &both, &x, SS_BAD_STORAGE},
      {"count missing", &one, nullptr, &rows, &x, SS_BAD_OBSERVATION_COUNT},
      {"count 0", &one, &zero, &rows, &x, SS_BAD_OBSERVATION_COUNT},
      {"count negative", &one, &minus, &rows, &x, SS_BAD_OBSERVATION_COUNT},
      {"no data: nothing else is looked at", &one, nullptr, nullptr, nullptr, SS_OK},
      {"all good", &one, &one, &rows, &x, SS_OK},
  };
  SSTask* task = nullptr;
  const auto create = [&task](const auto& c, bool wide) {
    return Entries<TypeParam>::new_task(&task, c.p, c.n, c.layout, c.data, nullptr, nullptr, wide);
  };
  for (const auto& c : cases) {
    for (const bool wide : {false, true}) {
      EXPECT_EQ(create(c, wide), c.status) << c.what << (wide ? ", 64-bit" : ", 32-bit");
      if (task != nullptr) __zokSSDeleteTask(&task);
    }
  }
  // The width decides what is read: the low word alone is 0.
  auto half = cases[8];
  half.p = &high;
  EXPECT_EQ(create(half, false), SS_BAD_DIMENSION);
  EXPECT_EQ(create(half, true), SS_OK);
  EXPECT_EQ(reinterpret_cast<uintptr_t>(task) % 128, 0u);
  __zokSSDeleteTask(&task);
}

TEST(Task, ConstructorsSetTheirFieldsOnly) {
  const int32_t p = 2, n = 3, layout = SS_COLUMNS, mask[] = {1, 0};
  const double x[6] = {}, w[3] = {};
  SSTask* task = nullptr;
  ASSERT_EQ(__zokdSSNewTask(&task, &p, &n, &layout, x, w, mask, 0), SS_OK);
  SSTask expected = empty;
  expected.creation_tag = 2;
  expected.is_double = 1;
  expected.dimension = &p;
  expected.observation_count = &n;
  expected.variable_mask = mask;
  expected.observations = x;
  expected.weights = w;
  expected.observation_storage = &layout;
  EXPECT_EQ(std::memcmp(task, &expected, sizeof expected), 0);
  __zokSSDeleteTask(&task);
  EXPECT_EQ(task, nullptr);
}

TEST(Task, DeletionCallsEveryHookFirst) {
  static int calls;
  calls = 0;
  const int32_t p = 1;
  SSTask* task = nullptr;
  ASSERT_EQ(__zoksSSNewTask(&task, &p, nullptr, nullptr, nullptr, nullptr, nullptr, 0), SS_OK);
  EXPECT_EQ(task->is_double, 0);
  task->cleanup_count = 1;
  task->cleanup_hooks[0] = [](SSTask* t) { calls += t->creation_tag; };
  for (int times = 0; times < 2; ++times) {  // the second finds nothing
    EXPECT_EQ(__zokSSDeleteTask(&task), SS_OK);
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(task, nullptr);
  }
  EXPECT_EQ(__zokSSDeleteTask(nullptr), SS_NULL_TASK);
  StreamState* stream = nullptr;  // deleted as harmlessly
  EXPECT_EQ(__zokDeleteStream(&stream), RNG_OK);
}

/// Fields that an editor sets together, and the numbers of their parameters.
struct Group {
  std::vector<size_t> fields;
  std::vector<int> numbers;
};
#define F(name) offsetof(SSTask, name)
const Group moments = {{F(mean), F(raw_moment_2), F(raw_moment_3), F(raw_moment_4),
                        F(central_moment_2), F(central_moment_3), F(central_moment_4)},
                       {7, 8, 9, 10, 11, 12, 13}};
const Group cov_cor = {{F(mean), F(cov), F(cov_storage), F(cor), F(cor_storage)},
                       {7, 19, 20, 21, 22}};
const Group partial_cov_cor = {
    {F(partial_index_array), F(cov), F(cov_storage), F(cor), F(cor_storage), F(partial_cov),
     F(partial_cov_storage), F(partial_cor), F(partial_cor_storage)},
    {45, 19, 20, 21, 22, 46, 47, 48, 49}};
const Group quantiles = {
    {F(quant_order_count), F(quant_orders), F(quantiles), F(order_stats), F(order_stats_storage)},
    {24, 25, 26, 27, 44}};
const Group stream_quantiles = {{F(stream_order_count), F(stream_orders), F(stream_quantiles),
                                 F(stream_param_count), F(stream_params)},
                                {64, 65, 66, 62, 63}};
const Group pooled_covariance = {{F(group_indices), F(pooled_mean), F(pooled_cov),
                                  F(group_output_indices), F(group_means), F(group_cov)},
                                 {28, 30, 31, 32, 33, 35}};
const Group missing_vals = {{F(missing_param_count), F(missing_params), F(init_estimates_count),
                             F(init_estimates), F(prior_count), F(prior), F(simulated_count),
                             F(simulated_values), F(estimates_count), F(estimates)},
                            {50, 51, 52, 53, 58, 59, 54, 55, 56, 57}};
const Group out_detect = {{F(outlier_param_count), F(outlier_params), F(outlier_weights)},
                          {41, 42, 43}};
const Group r_cov = {
    {F(robust_cov_storage), F(robust_param_count), F(robust_params), F(robust_cov), F(robust_mean)},
    {36, 37, 38, 39, 40}};
const Group mtx_parametrz = {
    {F(cor), F(cor_storage), F(parametrized_cor), F(parametrized_cor_storage)}, {21, 22, 60, 61}};
const Group others = {
    {F(dimension), F(observation_count), F(observations), F(observation_storage), F(variable_mask),
     F(weights), F(kurtosis), F(skewness), F(minimum), F(maximum), F(variation),
     F(accumulated_weights), F(pooled_cov_storage), F(group_cov_storage)},
    {1, 2, 3, 4, 5, 6, 14, 15, 16, 17, 18, 23, 29, 34}};
#undef F
/// Those of integers, and what a null array gives, from parameter 1 on.
const std::set<int> integer_parameters = {1,  2,  4,  5,  20, 22, 24, 28, 29, 32, 34, 36, 37,
                                          41, 44, 45, 47, 49, 50, 52, 54, 56, 58, 61, 62, 64};
const int null_statuses[] = {-4001, -4002, -4032, -4044, -4004, -4005, -4006, -4007, -4008, -4009,
                             -4010, -4011, -4012, -4013, -4014, -4015, -4016, -4017, -4018, -4044,
                             -4019, -4044, -4020, -4022, -4021, -4023, -4024, -4038, -4044, -4035,
                             -4034, -4038, -4037, -4044, -4036, -4044, -4043, -4042, -4028, -4027,
                             -4040, -4039, -4041, -4044, -4045, -4046, -4044, -4047, -4044, -4049,
                             -4048, -4052, -4053, -4055, -4054, -4056, -4057, -4061, -4062, -4071,
                             -4044, -4066, -4065, -4069, -4068, -4070};

using Bytes = std::vector<unsigned char>;
Bytes bytes_of(const SSTask& task) {
  const auto* p = reinterpret_cast<const unsigned char*>(&task);
  return Bytes(p, p + sizeof task);
}

/// The record with one field set to an address.
Bytes with_field(Bytes record, size_t offset, const void* address) {
  std::memcpy(record.data() + offset, &address, sizeof address);
  return record;
}

TEST(Task, EditorsSetTheFieldOfTheirParameter) {
  std::map<int, size_t> field;
  for (const Group& group :
       {moments, cov_cor, partial_cov_cor, quantiles, stream_quantiles, pooled_covariance,
        missing_vals, out_detect, r_cov, mtx_parametrz, others}) {
    for (size_t k = 0; k < group.numbers.size(); ++k) field[group.numbers[k]] = group.fields[k];
  }
  ASSERT_EQ(field.size(), std::size(null_statuses));
  const double place = 0;
  const auto check = [&]<class Array>(bool integers,
                                      int32_t (*edit)(SSTask*, int64_t, const Array*)) {
    const auto* array = reinterpret_cast<const Array*>(&place);
    SSTask task = empty;
    for (const int64_t unknown : {int64_t{0}, int64_t{67}, int64_t{-1}, (int64_t{1} << 32) + 7}) {
      EXPECT_EQ(edit(&task, unknown, array), -3) << unknown;
    }
    EXPECT_EQ(edit(nullptr, 67, nullptr), SS_NULL_TASK);
    for (const auto& [number, offset] : field) {
      SCOPED_TRACE(testing::Message() << number << (integers ? ", integers" : ", floats"));
      const bool takes_it = integer_parameters.contains(number) == integers;
      task = empty;
      EXPECT_EQ(edit(&task, number, nullptr), takes_it ? null_statuses[number - 1] : -3);
      EXPECT_EQ(bytes_of(task), bytes_of(empty));
      EXPECT_EQ(edit(&task, number, array), takes_it ? 0 : -3);
      edit(&task, number, nullptr);  // leaves the field as it is
      EXPECT_EQ(bytes_of(task), with_field(bytes_of(empty), offset, takes_it ? array : nullptr));
    }
  };
  check(false, __zokdSSEditTask);
  check(false, __zoksSSEditTask);
  check(true, __zokiSSEditTask);
}

/// A grouped editor sets these fields, in the order of its arguments, and leaves alone those for
/// which it gets null.
template <class... Args>
void expect_sets(int32_t (*editor)(SSTask*, Args*...), const std::vector<size_t>& offsets) {
  static char places[16];
  Bytes expected = bytes_of(empty);
  char* place = places;
  for (const size_t offset : offsets) expected = with_field(expected, offset, place++);
  place = places;
  const auto next = [&]() -> void* { return place++; };
  const std::tuple<Args*...> arguments{static_cast<Args*>(next())...};  // in this order
  SSTask task = empty;
  EXPECT_EQ(editor(&task, static_cast<Args*>(nullptr)...), SS_OK);
  EXPECT_EQ(bytes_of(task), bytes_of(empty));
  EXPECT_EQ(std::apply(editor, std::tuple_cat(std::tuple(&task), arguments)), SS_OK);
  EXPECT_EQ(bytes_of(task), expected);
  EXPECT_EQ(editor(&task, static_cast<Args*>(nullptr)...), SS_OK);
  EXPECT_EQ(bytes_of(task), expected);
  EXPECT_EQ(editor(nullptr, static_cast<Args*>(nullptr)...), SS_NULL_TASK);
}

TEST(Task, GroupedEditorsSetWhatIsGiven) {
#define EXPECT_SETS(name, group)             \
  expect_sets(__zokdSS##name, group.fields); \
  expect_sets(__zoksSS##name, group.fields)
  EXPECT_SETS(EditMoments, moments);
  EXPECT_SETS(EditCovCor, cov_cor);
  EXPECT_SETS(EditPartialCovCor, partial_cov_cor);
  EXPECT_SETS(EditQuantiles, quantiles);
  EXPECT_SETS(EditStreamQuantiles, stream_quantiles);
  EXPECT_SETS(EditPooledCovariance, pooled_covariance);
  EXPECT_SETS(EditMissingVals, missing_vals);
  EXPECT_SETS(EditOutDetect, out_detect);
  EXPECT_SETS(EditRCov, r_cov);
  EXPECT_SETS(EditMtxParametrz, mtx_parametrz);
#undef EXPECT_SETS
}

}  // namespace
}  // namespace orv_test
