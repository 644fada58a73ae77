// Tasks: what constructors check, which field each parameter sets, what grouped editors leave
// alone.
#include <cstring>
#include <tuple>

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
}

/// A parameter, its field's place and what a null array gives. i: an integer's.
struct ParameterCase {
  int number;
  char editor;
  size_t offset;
  int32_t null_status;
};
#define F(name) offsetof(SSTask, name)
const ParameterCase parameter_cases[] = {
    {1, 'i', F(dimension), -4001},
    {2, 'i', F(observation_count), -4002},
    {3, 'f', F(observations), -4032},
    {4, 'i', F(observation_storage), -4044},
    {5, 'i', F(variable_mask), -4004},
    {6, 'f', F(weights), -4005},
    {7, 'f', F(mean), -4006},
    {8, 'f', F(raw_moment_2), -4007},
    {9, 'f', F(raw_moment_3), -4008},
    {10, 'f', F(raw_moment_4), -4009},
    {11, 'f', F(central_moment_2), -4010},
    {12, 'f', F(central_moment_3), -4011},
    {13, 'f', F(central_moment_4), -4012},
    {14, 'f', F(kurtosis), -4013},
    {15, 'f', F(skewness), -4014},
    {16, 'f', F(minimum), -4015},
    {17, 'f', F(maximum), -4016},
    {18, 'f', F(variation), -4017},
    {19, 'f', F(cov), -4018},
    {20, 'i', F(cov_storage), -4044},
    {21, 'f', F(cor), -4019},
    {22, 'i', F(cor_storage), -4044},
    {23, 'f', F(accumulated_weights), -4020},
    {24, 'i', F(quant_order_count), -4022},
    {25, 'f', F(quant_orders), -4021},
    {26, 'f', F(quantiles), -4023},
    {27, 'f', F(order_stats), -4024},
    {28, 'i', F(group_indices), -4038},
    {29, 'i', F(pooled_cov_storage), -4044},
    {30, 'f', F(pooled_mean), -4035},
    {31, 'f', F(pooled_cov), -4034},
    {32, 'i', F(group_output_indices), -4038},
    {33, 'f', F(group_means), -4037},
    {34, 'i', F(group_cov_storage), -4044},
    {35, 'f', F(group_cov), -4036},
    {36, 'i', F(robust_cov_storage), -4044},
    {37, 'i', F(robust_param_count), -4043},
    {38, 'f', F(robust_params), -4042},
    {39, 'f', F(robust_cov), -4028},
    {40, 'f', F(robust_mean), -4027},
    {41, 'i', F(outlier_param_count), -4040},
    {42, 'f', F(outlier_params), -4039},
    {43, 'f', F(outlier_weights), -4041},
    {44, 'i', F(order_stats_storage), -4044},
    {45, 'i', F(partial_index_array), -4045},
    {46, 'f', F(partial_cov), -4046},
    {47, 'i', F(partial_cov_storage), -4044},
    {48, 'f', F(partial_cor), -4047},
    {49, 'i', F(partial_cor_storage), -4044},
    {50, 'i', F(missing_param_count), -4049},
    {51, 'f', F(missing_params), -4048},
    {52, 'i', F(init_estimates_count), -4052},
    {53, 'f', F(init_estimates), -4053},
    {54, 'i', F(simulated_count), -4055},
    {55, 'f', F(simulated_values), -4054},
    {56, 'i', F(estimates_count), -4056},
    {57, 'f', F(estimates), -4057},
    {58, 'i', F(prior_count), -4061},
    {59, 'f', F(prior), -4062},
    {60, 'f', F(parametrized_cor), -4071},
    {61, 'i', F(parametrized_cor_storage), -4044},
    {62, 'i', F(stream_param_count), -4066},
    {63, 'f', F(stream_params), -4065},
    {64, 'i', F(stream_order_count), -4069},
    {65, 'f', F(stream_orders), -4068},
    {66, 'f', F(stream_quantiles), -4070},
};

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
  const double place = 0;
  const auto check = [&]<class Array>(char kind, int32_t (*edit)(SSTask*, int64_t, const Array*)) {
    const auto* array = reinterpret_cast<const Array*>(&place);
    SSTask task = empty;
    for (const int64_t unknown : {int64_t{0}, int64_t{67}, int64_t{-1}, (int64_t{1} << 32) + 7}) {
      EXPECT_EQ(edit(&task, unknown, array), -3) << unknown;
    }
    EXPECT_EQ(edit(nullptr, 67, nullptr), SS_NULL_TASK);
    for (const auto& [number, editor, offset, null_status] : parameter_cases) {
      SCOPED_TRACE(testing::Message() << kind << number);
      const bool takes_it = editor == kind;
      task = empty;
      EXPECT_EQ(edit(&task, number, nullptr), takes_it ? null_status : -3);
      EXPECT_EQ(bytes_of(task), bytes_of(empty));
      EXPECT_EQ(edit(&task, number, array), takes_it ? 0 : -3);
      edit(&task, number, nullptr);  // leaves the field as it is
      EXPECT_EQ(bytes_of(task), with_field(bytes_of(empty), offset, takes_it ? array : nullptr));
    }
  };
  check('f', __zokdSSEditTask);
  check('f', __zoksSSEditTask);
  check('i', __zokiSSEditTask);
}

/// A grouped editor sets these fields, in the order of its arguments, and leaves alone those for
/// which it gets null.
template <class... Args>
void expect_sets(int32_t (*editor)(SSTask*, Args*...), std::initializer_list<size_t> offsets) {
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

template <class D, class S>
void expect_group(const char* name, D by_d, S by_s, std::initializer_list<size_t> offsets) {
  SCOPED_TRACE(name);
  expect_sets(by_d, offsets);
  expect_sets(by_s, offsets);
}

TEST(Task, GroupedEditorsSetWhatIsGiven) {
#define GROUP(name) #name, __zokdSS##name, __zoksSS##name
  expect_group(GROUP(EditMoments), {F(mean), F(raw_moment_2), F(raw_moment_3), F(raw_moment_4),
                                    F(central_moment_2), F(central_moment_3), F(central_moment_4)});
  expect_group(GROUP(EditCovCor), {F(mean), F(cov), F(cov_storage), F(cor), F(cor_storage)});
  expect_group(GROUP(EditPartialCovCor),
               {F(partial_index_array), F(cov), F(cov_storage), F(cor), F(cor_storage),
                F(partial_cov), F(partial_cov_storage), F(partial_cor), F(partial_cor_storage)});
  expect_group(GROUP(EditQuantiles), {F(quant_order_count), F(quant_orders), F(quantiles),
                                      F(order_stats), F(order_stats_storage)});
  expect_group(GROUP(EditStreamQuantiles),
               {F(stream_order_count), F(stream_orders), F(stream_quantiles), F(stream_param_count),
                F(stream_params)});
  expect_group(GROUP(EditPooledCovariance),
               {F(group_indices), F(pooled_mean), F(pooled_cov), F(group_output_indices),
                F(group_means), F(group_cov)});
  expect_group(GROUP(EditMissingVals),
               {F(missing_param_count), F(missing_params), F(init_estimates_count),
                F(init_estimates), F(prior_count), F(prior), F(simulated_count),
                F(simulated_values), F(estimates_count), F(estimates)});
  expect_group(GROUP(EditOutDetect),
               {F(outlier_param_count), F(outlier_params), F(outlier_weights)});
  expect_group(GROUP(EditRCov), {F(robust_cov_storage), F(robust_param_count), F(robust_params),
                                 F(robust_cov), F(robust_mean)});
  expect_group(GROUP(EditMtxParametrz),
               {F(cor), F(cor_storage), F(parametrized_cor), F(parametrized_cor_storage)});
#undef F
#undef GROUP
}

}  // namespace
}  // namespace orv_test
