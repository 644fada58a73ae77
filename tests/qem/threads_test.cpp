// SPDX-License-Identifier: MIT
// Four threads at once, each under a mode, callback and input base of its own.
#include <atomic>
#include <limits>

#include "harness.hpp"

using namespace orv_test;

namespace {

thread_local double mended;                 // what this thread's callback puts in place of a result
thread_local std::vector<int32_t> indices;  // of reports

int32_t mend(QemErrorContext* record) {
  indices.push_back(record->index);
  record->res1 = record->res2 = mended;
  return 0;
}

void work(int thread, std::atomic<int>& ready) {
  const QemMode accuracy = thread % 3 + 1;
  const bool flushed = thread % 2 != 0;
  constexpr int n = 35, rounds = 4000, rare[] = {17, 34};  // in a block and behind the last
  mended = 1000 + thread;
  orv_qem_kernel_SetErrorCallBack(mend);
  orv_qem_kernel_SetMode(accuracy | QEM_ERRMODE_CALLBACK |
                         (flushed ? DENORMALS_FLUSHED : DENORMALS_KEPT));
  std::vector<double> a(n), r(n), tiny(n, std::numeric_limits<double>::denorm_min()), sum(n);
  for (int i = 0; i < n; ++i) a[i] = 0.25 * i - 4 * thread;
  std::vector<double> expected(n);
  const auto exp_kernel = orv_qem_kernel_dExp_ttab[accuracy - 1];
  for (int i = 0; i < n; ++i) exp_kernel(1, &a[i], &expected[i]);
  for (const int i : rare) a[i] = thread % 2 == 0 ? 1000 : -1000, expected[i] = mended;
  const auto base = reinterpret_cast<uintptr_t>(a.data()) - 100 * thread * sizeof(double);
  orv_qem_kernel_SetInterfInputVectorPointer(reinterpret_cast<const void*>(base));

  ready.fetch_add(1);
  while (ready.load() < 4) std::this_thread::yield();
  for (int round = 0; round < rounds; ++round) {
    ASSERT_EQ(orv_qem_kernel_GetTTableIndex(), static_cast<int32_t>(accuracy) - 1);
    indices.clear();
    exp_kernel(n, a.data(), r.data());
    ASSERT_TRUE(same_bits(r, expected));
    ASSERT_EQ(indices, (std::vector<int32_t>{rare[0] + 100 * thread, rare[1] + 100 * thread}));
    ASSERT_EQ(orv_qem_kernel_ClearErrStatus(), thread % 2 == 0 ? 3 : 4);
    _qemdAdd(n, tiny.data(), tiny.data(), sum.data());
    ASSERT_EQ(sum, std::vector<double>(n, flushed ? 0 : 2 * tiny[0]));
    ASSERT_EQ(orv_qem_kernel_GetErrStatus(), 0);
  }
  EXPECT_EQ(orv_qem_kernel_GetErrorCallBack(), mend);
}

TEST(Threads, DoNotShareTheirState) {
  std::atomic<int> ready{0};
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([thread, &ready] { work(thread, ready); });
  }
  for (std::thread& thread : threads) thread.join();
}

}  // namespace
