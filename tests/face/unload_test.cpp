// SPDX-License-Identifier: MIT
// A program that loads the thread services by hand, uses them and closes them.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "orv/threads.h"

namespace {

TEST(Threads, StayLoadedWhileTheirThreadsSleep) {
  void* library = dlopen(ORV_THREADS_LIBRARY, RTLD_NOW);
  ASSERT_NE(library, nullptr) << dlerror();
  const auto set_count = (decltype(&orv_threads_set_count))dlsym(library, "orv_threads_set_count");
  const auto pool = (decltype(&orv_threads_pool))dlsym(library, "orv_threads_pool");
  set_count(4);
  int32_t seen[4] = {};
  pool()->run_threads(4, seen, [](int32_t thread, int32_t, int32_t, void* args) {
    static_cast<int32_t*>(args)[thread] = thread + 1;
  });
  EXPECT_EQ(seen[0] + seen[1] + seen[2] + seen[3], 10);
  EXPECT_EQ(dlclose(library), 0);
  EXPECT_NE(dlopen(ORV_THREADS_LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr);
}

}  // namespace
