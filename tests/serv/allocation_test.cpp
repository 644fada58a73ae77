// SPDX-License-Identifier: MIT
// What the library allocates, and what happens when an allocation fails.
#include <orv/qem.h>
#include <pthread.h>
#include <signal.h>

#include <thread>

#include <gtest/gtest.h>

#include "failing_allocator.hpp"
#include "support/kernels.hpp"

using namespace orv_test;

namespace {

const struct {
  const char* name;
  void (*use)();
} cells[] = {
    {"mode", [] { orv_qem_kernel_GetMode(); }},
    {"status", [] { orv_qem_kernel_SetErrStatus(1); }},
    {"callback", [] { orv_qem_kernel_GetErrorCallBack(); }},
    {"input base", [] { orv_qem_kernel_SetInterfInputVectorPointer(nullptr); }},
};

TEST(Allocation, EachThreadCellIsOneSmallBlock) {
  for (const auto& cell : cells) {
    std::thread([&] {
      watch_allocations();
      cell.use();
      cell.use();
      const Allocations seen = seen_allocations();
      EXPECT_EQ(seen.asked, 1) << cell.name;
      EXPECT_EQ(seen.bytes, 8u) << cell.name;
    }).join();
  }
}

pthread_key_t late_key;
int left_open;

/// Puts itself off once, to a round in which the cells' keys are done.
void look_late(void* rounds) {
  if (rounds == &late_key) {
    pthread_setspecific(late_key, &left_open);
  } else {
    left_open = seen_allocations().open;
  }
}

TEST(Allocation, ThreadCellsAreReleasedWithTheirThread) {
  ASSERT_EQ(pthread_key_create(&late_key, look_late), 0);
  left_open = 77;
  std::thread([] {
    pthread_setspecific(late_key, &late_key);
    watch_allocations();
    for (const auto& cell : cells) cell.use();
  }).join();
  pthread_key_delete(late_key);
  EXPECT_EQ(left_open, 0);
}

TEST(Allocation, WithoutMemoryForACellTheThreadEnds) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  for (const auto& cell : cells) {
    EXPECT_EXIT(
        {
          watch_allocations(1);
          cell.use();
        },
        testing::KilledBySignal(SIGSEGV), "^$")
        << cell.name;
  }
}

TEST(Allocation, KernelsAllocateNothing) {
  orv_qem_kernel_SetMode(QEM_ERRMODE_IGNORE);
  orv_qem_kernel_SetErrStatus(0);
  for (const Kernel& kernel : all_slots()) {
    alignas(16) char a[50 * 16], r[2][50 * 16];
    for (char& byte : a) byte = 0x7F;  // NaN in every type
    orv_call::Arguments arguments = usual_arguments(kernel, 50);
    for (int j = 0; j < 2; ++j) arguments.inputs[j] = a, arguments.results[j] = r[j];
    watch_allocations();
    kernel.call(arguments);
    EXPECT_EQ(seen_allocations().asked, 0) << kernel.name();
  }
}

}  // namespace
