// What each entry looks for, in which order, and that it looks for nothing else.
#include "entry_cases.hpp"

using namespace orv_test;

namespace {

template <class T>
class Status : public testing::Test {};
TYPED_TEST_SUITE(Status, Precisions);

/// From the last check on one thing more is wrong at a time, and is told before all the others.
TYPED_TEST(Status, ChecksComeInTheirOrder) {
  for (const Case& c : all_cases<TypeParam>()) {
    SCOPED_TRACE(testing::Message() << "estimates " << c.estimates);
    CaseTask<TypeParam> task(c);
    for (const uint64_t method_bit : {SS_METHOD_FAST, SS_METHOD_ONE_PASS}) {
      task.how = c.methods & method_bit;
      if (task.how != 0) {
        EXPECT_EQ(task.run(), SS_OK) << "method " << task.how;
      }
    }
    task.how = c.methods;
    for (size_t i = task.checks.size(); i-- > 0;) {
      for (const void* wrong : task.checks[i].wrong) {
        task.set(task.checks[i].field, wrong);
        EXPECT_EQ(task.run(), task.checks[i].status) << "check " << i;
      }
    }
  }
}

}  // namespace
