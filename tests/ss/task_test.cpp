// Tasks: what constructors check, which field each parameter sets, what grouped editors leave
// alone.
#include <cstring>
#include <tuple>

#include "support.hpp"

namespace orv_test {
namespace {

/// What a constructor sees: null where a pointer is not set.
struct NewTaskCase {
  const char* what;
  const int64_t *p, *n, *layout;
  bool data;
  int32_t status;
};

TEST(Task, ConstructorsCheckInOrder) {
  static const int64_t one = 1, zero = 0, minus = -1, high = int64_t{1} << 32, rows = SS_ROWS,
                       both = SS_ROWS | SS_COLUMNS;
  const NewTaskCase cases[] = {
      {"no dimension", nullptr, nullptr, nullptr, true, SS_BAD_DIMENSION},
      {"dimension 0", &zero, &one, &rows, true, SS_BAD_DIMENSION},
      {"negative dimension", &minus, &one, &rows, true, SS_BAD_DIMENSION},
      {"storage missing, count bad", &one, &zero, nullptr, true, SS_NULL_STORAGE},
      {"storage unknown, count bad", &one, &zero, &both, true, SS_BAD_STORAGE},
      {"count missing", &one, nullptr, &rows, true, SS_BAD_OBSERVATION_COUNT},
      {"count 0", &one, &zero, &rows, true, SS_BAD_OBSERVATION_COUNT},
      {"count negative", &one, &minus, &rows, true, SS_BAD_OBSERVATION_COUNT},
      {"no data: nothing else is looked at", &one, nullptr, nullptr, false, SS_OK},
      {"all good", &one, &one, &rows, true, SS_OK},
  };
  const double x = 0;
  const float y = 0;
  for (const NewTaskCase& c : cases) {
    for (const bool wide : {false, true}) {
      SSTask* task = nullptr;
      EXPECT_EQ(
          __zokdSSNewTask(&task, c.p, c.n, c.layout, c.data ? &x : nullptr, nullptr, nullptr, wide),
          c.status)
          << c.what << (wide ? ", 64-bit" : ", 32-bit");
      if (task != nullptr) __zokSSDeleteTask(&task);
      EXPECT_EQ(
          __zoksSSNewTask(&task, c.p, c.n, c.layout, c.data ? &y : nullptr, nullptr, nullptr, wide),
          c.status)
          << c.what;
      if (task != nullptr) __zokSSDeleteTask(&task);
    }
  }
  // The width decides what is read: the low word alone is 0.
  SSTask* task = nullptr;
  EXPECT_EQ(__zokdSSNewTask(&task, &high, nullptr, nullptr, nullptr, nullptr, nullptr, 0),
            SS_BAD_DIMENSION);
  EXPECT_EQ(__zokdSSNewTask(&task, &high, nullptr, nullptr, nullptr, nullptr, nullptr, 1), SS_OK);
  EXPECT_EQ(reinterpret_cast<uintptr_t>(task) % 128, 0u);
  __zokSSDeleteTask(&task);
}

TEST(Task, ConstructorsSetTheirFieldsOnly) {
  const int32_t p = 2, n = 3, layout = SS_COLUMNS, mask[] = {1, 0};
  const double x[6] = {}, w[3] = {};
  SSTask* task = nullptr;
  ASSERT_EQ(__zokdSSNewTask(&task, &p, &n, &layout, x, w, mask, 0), SS_OK);
  SSTask expected;
  std::memset(&expected, 0, sizeof expected);
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
  EXPECT_EQ(__zokSSDeleteTask(&task), SS_OK);
  EXPECT_EQ(calls, 2);
  EXPECT_EQ(__zokSSDeleteTask(nullptr), SS_NULL_TASK);
}

/// A parameter, its field's place and what a null array gives. i: an integer's.
struct ParameterCase {
  int number;
  char editor;
  size_t offset;
  int32_t null_status;
};
#define FIELD(name) offsetof(SSTask, name)
const ParameterCase parameter_cases[] = {
    {1, 'i', FIELD(dimension), -4001},
    {2, 'i', FIELD(observation_count), -4002},
    {3, 'f', FIELD(observations), -4032},
    {4, 'i', FIELD(observation_storage), -4044},
    {5, 'i', FIELD(variable_mask), -4004},
    {6, 'f', FIELD(weights), -4005},
    {7, 'f', FIELD(mean), -4006},
    {8, 'f', FIELD(raw_moment_2), -4007},
    {9, 'f', FIELD(raw_moment_3), -4008},
    {10, 'f', FIELD(raw_moment_4), -4009},
    {11, 'f', FIELD(central_moment_2), -4010},
    {12, 'f', FIELD(central_moment_3), -4011},
    {13, 'f', FIELD(central_moment_4), -4012},
    {14, 'f', FIELD(kurtosis), -4013},
    {15, 'f', FIELD(skewness), -4014},
    {16, 'f', FIELD(minimum), -4015},
    {17, 'f', FIELD(maximum), -4016},
    {18, 'f', FIELD(variation), -4017},
    {19, 'f', FIELD(cov), -4018},
    {20, 'i', FIELD(cov_storage), -4044},
    {21, 'f', FIELD(cor), -4019},
    {22, 'i', FIELD(cor_storage), -4044},
    {23, 'f', FIELD(accumulated_weights), -4020},
    {24, 'i', FIELD(quant_order_count), -4022},
    {25, 'f', FIELD(quant_orders), -4021},
    {26, 'f', FIELD(quantiles), -4023},
    {27, 'f', FIELD(order_stats), -4024},
    {28, 'i', FIELD(group_indices), -4038},
    {29, 'i', FIELD(pooled_cov_storage), -4044},
    {30, 'f', FIELD(pooled_mean), -4035},
    {31, 'f', FIELD(pooled_cov), -4034},
    {32, 'i', FIELD(group_output_indices), -4038},
    {33, 'f', FIELD(group_means), -4037},
    {34, 'i', FIELD(group_cov_storage), -4044},
    {35, 'f', FIELD(group_cov), -4036},
    {36, 'i', FIELD(robust_cov_storage), -4044},
    {37, 'i', FIELD(robust_param_count), -4043},
    {38, 'f', FIELD(robust_params), -4042},
    {39, 'f', FIELD(robust_cov), -4028},
    {40, 'f', FIELD(robust_mean), -4027},
    {41, 'i', FIELD(outlier_param_count), -4040},
    {42, 'f', FIELD(outlier_params), -4039},
    {43, 'f', FIELD(outlier_weights), -4041},
    {44, 'i', FIELD(order_stats_storage), -4044},
    {45, 'i', FIELD(partial_index_array), -4045},
    {46, 'f', FIELD(partial_cov), -4046},
    {47, 'i', FIELD(partial_cov_storage), -4044},
    {48, 'f', FIELD(partial_cor), -4047},
    {49, 'i', FIELD(partial_cor_storage), -4044},
    {50, 'i', FIELD(missing_param_count), -4049},
    {51, 'f', FIELD(missing_params), -4048},
    {52, 'i', FIELD(init_estimates_count), -4052},
    {53, 'f', FIELD(init_estimates), -4053},
    {54, 'i', FIELD(simulated_count), -4055},
    {55, 'f', FIELD(simulated_values), -4054},
    {56, 'i', FIELD(estimates_count), -4056},
    {57, 'f', FIELD(estimates), -4057},
    {58, 'i', FIELD(prior_count), -4061},
    {59, 'f', FIELD(prior), -4062},
    {60, 'f', FIELD(parametrized_cor), -4071},
    {61, 'i', FIELD(parametrized_cor_storage), -4044},
    {62, 'i', FIELD(stream_param_count), -4066},
    {63, 'f', FIELD(stream_params), -4065},
    {64, 'i', FIELD(stream_order_count), -4069},
    {65, 'f', FIELD(stream_orders), -4068},
    {66, 'f', FIELD(stream_quantiles), -4070},
};
#undef FIELD

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
  const double d = 0;
  const auto* s = reinterpret_cast<const float*>(&d);
  SSTask empty;
  std::memset(&empty, 0, sizeof empty);
  for (const ParameterCase& c : parameter_cases) {
    SCOPED_TRACE(c.number);
    const bool integers = c.editor == 'i';
    const Bytes before = bytes_of(empty), after = with_field(before, c.offset, &d);
    SSTask by_d = empty, by_s = empty, by_i = empty;
    EXPECT_EQ(__zokdSSEditTask(&by_d, c.number, nullptr), integers ? -3 : c.null_status);
    EXPECT_EQ(__zoksSSEditTask(&by_s, c.number, nullptr), integers ? -3 : c.null_status);
    EXPECT_EQ(__zokiSSEditTask(&by_i, c.number, nullptr), integers ? c.null_status : -3);
    EXPECT_EQ(__zokdSSEditTask(&by_d, c.number, &d), integers ? -3 : 0);
    EXPECT_EQ(__zoksSSEditTask(&by_s, c.number, s), integers ? -3 : 0);
    EXPECT_EQ(__zokiSSEditTask(&by_i, c.number, &d), integers ? 0 : -3);
    EXPECT_EQ(bytes_of(by_d), integers ? before : after);
    EXPECT_EQ(bytes_of(by_s), integers ? before : after);
    EXPECT_EQ(bytes_of(by_i), integers ? after : before);
    // A null array leaves the field as it is.
    (integers ? __zokiSSEditTask(&by_i, c.number, nullptr)
              : __zokdSSEditTask(&by_d, c.number, nullptr));
    EXPECT_EQ(bytes_of(integers ? by_i : by_d), after);
  }
  for (const int64_t unknown : {int64_t{0}, int64_t{67}, int64_t{-1}, (int64_t{1} << 32) + 7}) {
    EXPECT_EQ(__zokdSSEditTask(&empty, unknown, &d), -3) << unknown;
    EXPECT_EQ(__zoksSSEditTask(&empty, unknown, s), -3) << unknown;
    EXPECT_EQ(__zokiSSEditTask(&empty, unknown, &d), -3) << unknown;
  }
  EXPECT_EQ(__zokdSSEditTask(nullptr, 67, nullptr), SS_NULL_TASK);
  EXPECT_EQ(__zoksSSEditTask(nullptr, 7, nullptr), SS_NULL_TASK);
  EXPECT_EQ(__zokiSSEditTask(nullptr, 1, nullptr), SS_NULL_TASK);
}

/// Calls a grouped editor with the addresses `at`, `at` + 1, ...; or with null for all.
template <class... Args>
int32_t call(int32_t (*editor)(SSTask*, Args*...), SSTask* task, char* at) {
  const auto next = [&]() -> void* { return at == nullptr ? nullptr : at++; };
  const std::tuple<Args*...> arguments{static_cast<Args*>(next())...};  // in this order
  return std::apply([&](Args*... a) { return editor(task, a...); }, arguments);
}

/// Both twins of a grouped editor set these fields, in the order of their arguments.
template <class D, class S>
void expect_group(const char* name, D by_d, S by_s, std::initializer_list<size_t> offsets) {
  SCOPED_TRACE(name);
  static char places[16];
  SSTask empty;
  std::memset(&empty, 0, sizeof empty);
  Bytes expected = bytes_of(empty);
  char* place = places;
  for (const size_t offset : offsets) expected = with_field(expected, offset, place++);
  SSTask d = empty, s = empty;
  EXPECT_EQ(call(by_d, &d, nullptr), SS_OK);
  EXPECT_EQ(bytes_of(d), bytes_of(empty));
  EXPECT_EQ(call(by_d, &d, places), SS_OK);
  EXPECT_EQ(call(by_s, &s, places), SS_OK);
  EXPECT_EQ(bytes_of(d), expected);
  EXPECT_EQ(bytes_of(s), expected);
  EXPECT_EQ(call(by_d, &d, nullptr), SS_OK);
  EXPECT_EQ(bytes_of(d), expected);
  EXPECT_EQ(call(by_d, nullptr, places), SS_NULL_TASK);
  EXPECT_EQ(call(by_s, nullptr, nullptr), SS_NULL_TASK);
}

TEST(Task, GroupedEditorsSetWhatIsGiven) {
#define GROUP(name) #name, __zokdSS##name, __zoksSS##name
#define F(name) offsetof(SSTask, name)
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
