// SPDX-License-Identifier: MIT
// Tasks: what constructors check, which field each parameter sets, what grouped editors leave
// alone.
#include <algorithm>
#include <iterator>
#include <set>
#include <tuple>

#include "orv/zok.h"
#include "support.hpp"

namespace orv_test {
namespace {

/// The parameters in the order of their fields, from `dimension` on; 0 is the library's own.
const int in_record[] = {1,  2,  5,  3,  6,  23, 4,  60, 61, 7,  8,  9,  10, 11, 12, 13, 14,
                         15, 18, 16, 17, 20, 19, 22, 21, 28, 32, 33, 35, 34, 30, 31, 29, 24,
                         25, 26, 27, 44, 64, 65, 66, 0,  62, 63, 37, 38, 39, 40, 36, 41, 42,
                         43, 45, 46, 47, 48, 49, 50, 51, 52, 53, 58, 59, 54, 55, 56, 57};
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

/// A record of zeros, between its fields too, but for the fields of these parameters, which are
/// addresses from `array` on.
SSTask record(const std::vector<int>& numbers = {}, const void* array = nullptr) {
  SSTask task;
  std::memset(&task, 0, sizeof task);
  const void** const fields = &task.dimension;
  for (const int number : numbers) {
    fields[std::ranges::find(in_record, number) - std::begin(in_record)] = array;
    array = static_cast<const char*>(array) + 1;
  }
  return task;
}

void expect_same(const SSTask& task, const SSTask& expected) {
  EXPECT_EQ(std::memcmp(&task, &expected, sizeof task), 0);
}

TYPED_TEST(EachPrecision, TaskConstructorsCheckInOrder) {
  static const int64_t one = 1, zero = 0, minus = -1, high = int64_t{1} << 32, rows = SS_ROWS,
                       both = SS_ROWS | SS_COLUMNS;
  const auto new_task = Entries<TypeParam>::new_task;
  const TypeParam x = 0;
  const struct {
    const int64_t *p, *n, *layout;
    const TypeParam* data;
    int32_t status, wide_status = status;
  } cases[] = {{nullptr, nullptr, nullptr, &x, SS_BAD_DIMENSION},
               {&zero, &one, &rows, &x, SS_BAD_DIMENSION},
               {&minus, &one, &rows, &x, SS_BAD_DIMENSION},
               {&one, &zero, nullptr, &x, SS_NULL_STORAGE},
               {&one, &zero, &both, &x, SS_BAD_STORAGE},
               {&one, nullptr, &rows, &x, SS_BAD_OBSERVATION_COUNT},
               {&one, &zero, &rows, &x, SS_BAD_OBSERVATION_COUNT},
               {&one, &minus, &rows, &x, SS_BAD_OBSERVATION_COUNT},
               {&one, nullptr, nullptr, nullptr, SS_OK},  // nothing else is looked at
               {&high, nullptr, nullptr, nullptr, SS_BAD_DIMENSION, SS_OK},  // low word 0
               {&one, &one, &rows, &x, SS_OK}};
  for (const auto& c : cases) {
    for (const bool wide : {false, true}) {
      SSTask* task = nullptr;
      EXPECT_EQ(new_task(&task, c.p, c.n, c.layout, c.data, nullptr, nullptr, wide),
                wide ? c.wide_status : c.status)
          << "case " << &c - cases << (wide ? ", 64-bit" : ", 32-bit");
      EXPECT_EQ(reinterpret_cast<uintptr_t>(task) % 128, 0u);
      __zokSSDeleteTask(&task);
    }
  }
}

TEST(Task, ConstructorsSetTheirFieldsOnlyAndDeletionCallsHooks) {
  static int calls;
  calls = 0;
  const int32_t p = 2, n = 3, layout = SS_COLUMNS, mask[] = {1, 0};
  const double x[6] = {}, w[3] = {};
  SSTask *task = nullptr, *of_floats = nullptr;
  ASSERT_EQ(__zokdSSNewTask(&task, &p, &n, &layout, x, w, mask, 0), SS_OK);
  SSTask expected = record();
  expected.creation_tag = 2;
  expected.is_double = 1;
  expected.dimension = &p;
  expected.observation_count = &n;
  expected.variable_mask = mask;
  expected.observations = x;
  expected.weights = w;
  expected.observation_storage = &layout;
  expect_same(*task, expected);
  ASSERT_EQ(__zoksSSNewTask(&of_floats, &p, nullptr, nullptr, nullptr, nullptr, nullptr, 0), SS_OK);
  EXPECT_EQ(of_floats->is_double, 0);
  __zokSSDeleteTask(&of_floats);

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

TEST(Task, EditorsSetTheFieldOfTheirParameter) {
  const double place = 0;
  const auto check = [&]<class Array>(bool integers,
                                      int32_t (*edit)(SSTask*, int64_t, const Array*)) {
    const auto* array = reinterpret_cast<const Array*>(&place);
    SSTask task = record();
    for (const int64_t unknown : {int64_t{0}, int64_t{67}, int64_t{-1}, (int64_t{1} << 32) + 7}) {
      EXPECT_EQ(edit(&task, unknown, array), -3) << unknown;
    }
    EXPECT_EQ(edit(nullptr, 67, nullptr), SS_NULL_TASK);
    for (int number = 1; number <= 66; ++number) {
      SCOPED_TRACE(testing::Message() << number << (integers ? ", integers" : ", floats"));
      const bool takes_it = integer_parameters.contains(number) == integers;
      task = record();
      EXPECT_EQ(edit(&task, number, nullptr), takes_it ? null_statuses[number - 1] : -3);
      expect_same(task, record());
      EXPECT_EQ(edit(&task, number, array), takes_it ? 0 : -3);
      edit(&task, number, nullptr);  // leaves the field as it is
      expect_same(task, takes_it ? record({number}, array) : record());
    }
  };
  check(false, __zokdSSEditTask);
  check(false, __zoksSSEditTask);
  check(true, __zokiSSEditTask);
}

/// A grouped editor sets the fields of these parameters, in the order of its arguments, and leaves
/// alone those for which it gets null.
template <class... Args>
void expect_sets(int32_t (*editor)(SSTask*, Args*...), const std::vector<int>& numbers) {
  static char places[16];
  char* place = places;
  const auto next = [&]() -> void* { return place++; };
  const std::tuple<Args*...> arguments{static_cast<Args*>(next())...};  // in this order
  SSTask task = record();
  EXPECT_EQ(editor(&task, static_cast<Args*>(nullptr)...), SS_OK);
  expect_same(task, record());
  EXPECT_EQ(std::apply(editor, std::tuple_cat(std::tuple(&task), arguments)), SS_OK);
  expect_same(task, record(numbers, places));
  EXPECT_EQ(editor(&task, static_cast<Args*>(nullptr)...), SS_OK);
  expect_same(task, record(numbers, places));
  EXPECT_EQ(editor(nullptr, static_cast<Args*>(nullptr)...), SS_NULL_TASK);
}

TEST(Task, GroupedEditorsSetWhatIsGiven) {
#define EXPECT_SETS(name, ...)              \
  expect_sets(__zokdSS##name, __VA_ARGS__); \
  expect_sets(__zoksSS##name, __VA_ARGS__)
  EXPECT_SETS(EditMoments, {7, 8, 9, 10, 11, 12, 13});
  EXPECT_SETS(EditCovCor, {7, 19, 20, 21, 22});
  EXPECT_SETS(EditPartialCovCor, {45, 19, 20, 21, 22, 46, 47, 48, 49});
  EXPECT_SETS(EditQuantiles, {24, 25, 26, 27, 44});
  EXPECT_SETS(EditStreamQuantiles, {64, 65, 66, 62, 63});
  EXPECT_SETS(EditPooledCovariance, {28, 30, 31, 32, 33, 35});
  EXPECT_SETS(EditMissingVals, {50, 51, 52, 53, 58, 59, 54, 55, 56, 57});
  EXPECT_SETS(EditOutDetect, {41, 42, 43});
  EXPECT_SETS(EditRCov, {36, 37, 38, 39, 40});
  EXPECT_SETS(EditMtxParametrz, {21, 22, 60, 61});
#undef EXPECT_SETS
}

}  // namespace
}  // namespace orv_test
