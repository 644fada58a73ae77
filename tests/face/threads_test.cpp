// SPDX-License-Identifier: MIT
// Thread services: every item once, in order where that is promised, whoever calls from wherever.
#include "orv/threads.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <barrier>
#include <cfenv>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

using Function = std::function<void(int32_t item, int32_t thread, int32_t threads)>;

void call(int32_t item, int32_t thread, int32_t threads, void* args) {
  (*static_cast<const Function*>(args))(item, thread, threads);
}

/// A slot of a table, called with a function object.
using Slot = decltype(SSThreadServices::run_items);
void run(Slot slot, int32_t items, int32_t threads, Function function) {
  slot(items, threads, &function, call);
}
void run(decltype(SSThreadServices::run_threads) slot, int32_t threads, Function function) {
  slot(threads, &function, call);
}
void in_order(const SSThreadServices* s, int32_t item, int32_t thread, int32_t threads,
              Function function) {
  s->run_in_order(item, thread, threads, &function, call);
}

/// Items take odd times, and so end out of order.
void sleep_oddly(int32_t item) {
  std::this_thread::sleep_for(std::chrono::microseconds(item * 7919 % 13 * 40));
}

/// Calls test(services, threads) for either table, the pool with one thread up to more than there
/// are processors.
template <class Test>
void for_each_table(Test test) {
  test(orv_threads_serial(), 1);
  for (const int32_t count : {1, 2, 3, 4, 8, 40}) {
    SCOPED_TRACE("pool of " + std::to_string(count));
    orv_threads_set_count(count);
    test(orv_threads_pool(), count);
    test(orv_threads_reproducible(), count);
  }
}

class Threads : public testing::Test {
 protected:
  ~Threads() override { orv_threads_set_count(0); }
};

TEST_F(Threads, RunEveryItemOnceWithThreadNumbersOfTheirOwn) {
  for_each_table([](const SSThreadServices* s, int32_t count) {
    EXPECT_EQ(s->max_threads(), s == orv_threads_reproducible() ? 32 : count);
    for (const Slot slot : {s->run_items, s->run_ascending}) {
      for (const int32_t items : {0, 1, 2, 7, 300}) {
        for (const int32_t asked : {0, 1, 3, 100}) {
          std::vector<std::atomic<int>> times(items), busy(128);
          run(slot, items, asked, [&](int32_t item, int32_t thread, int32_t threads) {
            ++times.at(item);
            EXPECT_TRUE(threads <= count && (asked == 0 || threads <= asked));
            EXPECT_TRUE(thread >= 0 && thread < threads && busy.at(thread)++ == 0);
            if (items < 10) sleep_oddly(item);
            --busy.at(thread);
          });
          for (const auto& n : times) ASSERT_EQ(n, 1) << "items " << items << " asked " << asked;
        }
      }
    }
    for (const int32_t asked : {0, 1, 2, 5, 8, 100}) {
      const int32_t expected = asked == 0 ? s->max_threads() : asked;
      std::vector<std::atomic<int>> times(expected);
      run(s->run_threads, asked, [&](int32_t index, int32_t zero, int32_t threads) {
        ++times.at(index);
        EXPECT_TRUE(zero == 0 && threads == expected);
      });
      for (const auto& n : times) ASSERT_EQ(n, 1) << "asked " << asked;
    }
  });
}

/// How many threads meet inside a job of three, by indices or items; fewer would wait for ever.
int distinct_threads() {
  std::barrier all_there(3);
  std::vector<std::thread::id> ids(3);
  const Function meet = [&](int32_t t, int32_t, int32_t) {
    ids[t] = std::this_thread::get_id();
    all_there.arrive_and_wait();
  };
  run(orv_threads_pool()->run_items, 3, 0, meet);
  run(orv_threads_pool()->run_threads, 3, meet);
  return static_cast<int>(std::set(ids.begin(), ids.end()).size());
}

TEST_F(Threads, StartAscendingAndKeepTheOrder) {
  for_each_table([](const SSThreadServices* s, int32_t count) {
    for (const int32_t left_out : {0, 1}) {  // of three items
      std::vector<int32_t> expected, order;  // unguarded: run_in_order is the guard
      std::atomic<int32_t> begun = 0;
      for (int32_t i = 0; i < 60; ++i) {
        if (i % 3 >= left_out) expected.push_back(i);
      }
      run(s->run_ascending, 60, 0, [&](int32_t item, int32_t thread, int32_t threads) {
        // An item begins when all below have been taken; as many as there are threads may overlap.
        EXPECT_LT(std::abs(begun++ - item), count);
        sleep_oddly(item);
        if (item % 3 < left_out) return;
        in_order(s, item, thread, threads, [&](int32_t i, int32_t t, int32_t n) {
          EXPECT_TRUE(i == item && t == thread && n == threads);
          sleep_oddly(60 - i);
          order.push_back(i);
        });
        if (item % 2 == 0) sleep_oddly(item);
      });
      EXPECT_EQ(order, expected);
    }
  });
}

TEST_F(Threads, JobsFromInsideAnItemStayOnItsThread) {
  orv_threads_set_count(4);
  const auto* s = orv_threads_pool();
  std::atomic<int> runs = 0;
  std::vector<int32_t> order;
  run(s->run_ascending, 8, 0, [&](int32_t outer, int32_t outer_thread, int32_t outer_threads) {
    const auto expect_here = [&, here = std::this_thread::get_id()](auto, int32_t thread, auto) {
      ++runs;
      EXPECT_TRUE(std::this_thread::get_id() == here && thread == 0 && s->max_threads() == 1);
    };
    run(s->run_items, 5, 3, expect_here);
    run(s->run_threads, 3, expect_here);
    std::vector<int32_t> inner_order;
    run(s->run_ascending, 4, 0, [&](int32_t item, int32_t thread, int32_t threads) {
      expect_here(item, thread, threads);
      in_order(s, item, thread, threads, [&](int32_t i, auto, auto) { inner_order.push_back(i); });
    });
    EXPECT_EQ(inner_order, (std::vector{0, 1, 2, 3}));
    in_order(s, outer, outer_thread, outer_threads,
             [&](int32_t i, auto, auto) { order.push_back(i); });
  });
  EXPECT_EQ(runs, 8 * (5 + 3 + 4));
  EXPECT_EQ(order, (std::vector{0, 1, 2, 3, 4, 5, 6, 7}));
}

TEST_F(Threads, ServeSeveralCallers) {
  orv_threads_set_count(3);
  const auto* s = orv_threads_pool();
  const auto add_up = [s](int64_t& sum) {
    for (int round = 0; round < 50; ++round) {
      run(s->run_ascending, 20, 0, [&](int32_t item, int32_t thread, int32_t threads) {
        in_order(s, item, thread, threads, [&](int32_t i, auto, auto) { sum += i; });
      });
    }
  };
  std::vector<int64_t> sums(6);
  std::vector<std::thread> callers;
  for (int64_t& sum : sums) callers.emplace_back(add_up, std::ref(sum));
  for (auto& caller : callers) caller.join();
  EXPECT_EQ(sums, std::vector<int64_t>(6, 50 * 190));
}

TEST_F(Threads, CountComesFromTheEnvironment) {
  cpu_set_t set;
  ASSERT_EQ(sched_getaffinity(0, sizeof set, &set), 0);
  const int32_t all = CPU_COUNT(&set);
  const std::pair<const char*, int32_t> cases[] = {
      {"1", 1},  {"3", 3},    {"17", 17},   {"1000", 256}, {"4294967297", 256}, {"0", all},
      {"", all}, {"-2", all}, {"two", all}, {"3x", all},   {" 3", all},         {"+3", all}};
  for (const auto& [text, count] : cases) {
    setenv("ORV_NUM_THREADS", text, 1);
    orv_threads_set_count(0);
    EXPECT_EQ(orv_threads_pool()->max_threads(), count) << "'" << text << "'";
  }
  unsetenv("ORV_NUM_THREADS");
  orv_threads_set_count(-1);
  EXPECT_EQ(orv_threads_pool()->max_threads(), all);
  orv_threads_set_count(5);
  EXPECT_EQ(orv_threads_pool()->max_threads(), 5);
  EXPECT_EQ(orv_threads_serial()->max_threads(), 1);
}

TEST_F(Threads, ComputeInTheCallersRounding) {
  orv_threads_set_count(4);
  run(orv_threads_pool()->run_threads, 4, [](int32_t, int32_t, int32_t) {});  // begun as now
  std::fesetround(FE_UPWARD);
  std::vector<int> modes(4, -1);
  run(orv_threads_pool()->run_threads, 4,
      [&](int32_t t, int32_t, int32_t) { modes[t] = std::fegetround(); });
  std::fesetround(FE_TONEAREST);
  EXPECT_EQ(modes, std::vector<int>(4, FE_UPWARD));
}

// The child has none of the pool's threads, and one of them was at work when it was made.
TEST_F(Threads, AForkedProcessHasAPoolOfItsOwn) {
#ifdef __SANITIZE_THREAD__
  GTEST_SKIP() << "ThreadSanitizer knows no threads that a forked process starts";
#endif
  orv_threads_set_count(3);
  ASSERT_EQ(distinct_threads(), 3);
  std::atomic<bool> stop = false;
  std::thread busy([&] {
    while (!stop) distinct_threads();
  });
  for (int round = 0; round < 20; ++round) {
    const pid_t child = fork();
    if (child == 0) _exit(distinct_threads());
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 3) << status;
  }
  stop = true;
  busy.join();
}

TEST_F(Threads, ExitDoesNotWaitForThem) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  orv_threads_set_count(4);
  const Function exit_inside = [](int32_t t, int32_t, int32_t) {
    if (t == 2) std::exit(7);
    std::this_thread::sleep_for(std::chrono::seconds(100));
  };
  EXPECT_EXIT(run(orv_threads_pool()->run_threads, 4, exit_inside), testing::ExitedWithCode(7), "");
}

}  // namespace
