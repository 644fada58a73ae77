// What quantiles allocate, and what happens without memory.
#include "serv/failing_allocator.hpp"
#include "support.hpp"

using namespace orv_test;

namespace {

template <class T>
class QuantilesAllocationTest : public testing::Test {};
using Precisions = testing::Types<double, float>;
TYPED_TEST_SUITE(QuantilesAllocationTest, Precisions);

TYPED_TEST(QuantilesAllocationTest, NothingIsComputedWithoutMemory) {
  using T = TypeParam;
  const T x[] = {3, 5, 1, 6, 2, 4}, median = T(0.5);
  for (const int failing : {0, 1}) {
    T quantiles[] = {-1, -1}, sorted[] = {-1, -1, -1, -1, -1, -1};
    Task<T> task(2, 3, SS_COLUMNS, x);
    task.set(SS_PARAM_QUANT_ORDER_COUNT, {1})
        .set(SS_PARAM_QUANT_ORDERS, &median)
        .set(SS_PARAM_QUANTILES, quantiles)
        .set(SS_PARAM_ORDER_STATS, sorted)
        .set(SS_PARAM_ORDER_STATS_STORAGE, {SS_COLUMNS});
    watch_allocations(failing);
    const int32_t status = Entries<T>::quantiles(task, SS_EST_QUANTILES | SS_EST_ORDER_STATS,
                                                 SS_METHOD_FAST, orv_threads_serial());
    const Allocations seen = seen_allocations();
    EXPECT_EQ(status, SS_OK);
    EXPECT_EQ(seen.asked, 1);
    EXPECT_EQ(seen.bytes, 3 * sizeof(T) + 2 * sizeof(int32_t));
    EXPECT_EQ(seen.open, 0);
    EXPECT_EQ(quantiles[0], failing == 0 ? 2 : -1);
    EXPECT_EQ(quantiles[1], failing == 0 ? 5 : -1);
    EXPECT_EQ(sorted[0], failing == 0 ? 1 : -1);
  }
}

TYPED_TEST(QuantilesAllocationTest, WeightedQuantileTellsOfIt) {
  using T = TypeParam;
  const T x[] = {3, 1, 2}, weights[] = {1, 1, 1}, median = T(0.5);
  for (const int failing : {0, 1, 2}) {
    T result = -1;
    Task<T> task(1, 3, SS_COLUMNS, x);
    task.set(SS_PARAM_WEIGHTS, weights)
        .set(SS_PARAM_QUANT_ORDERS, &median)
        .set(SS_PARAM_QUANTILES, &result);
    watch_allocations(failing);
    const int32_t status = Entries<T>::weighted_median(task, 0, 0, nullptr);
    const Allocations seen = seen_allocations();
    EXPECT_EQ(status, failing == 0 ? SS_OK : SS_NO_MEMORY);
    EXPECT_EQ(seen.open, 0);
    EXPECT_EQ(result, failing == 0 ? 2 : -1);
  }
}

}  // namespace
