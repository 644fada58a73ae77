// SPDX-License-Identifier: MIT
// Thread services: a serial table, and two that share a pool of standard threads.
//
// Every run of items is a Job, a serial one with a single thread. The pool's threads live as long
// as the process: nobody joins them at exit, and the library stays loaded when it is closed.
#include "orv/threads.h"

#include <pthread.h>
#include <sched.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cfenv>
#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <new>
#include <system_error>
#include <thread>

namespace {

constexpr int32_t most_threads = 256;

/// Enough to keep that many processors busy, few enough that sums of each take little room.
constexpr int32_t fixed_shares = 32;

// ---- Jobs ---------------------------------------------------------------------------------------

enum class Spread {
  dynamic,    // a thread that is free takes the next item
  ascending,  // the same, and items may call run_in_order
  by_thread   // item i belongs to thread i, as far as there are threads
};

struct Job {
  Spread spread;
  int32_t items;
  int32_t threads;  // that work on it
  void* args;
  SSItemFunction function;

  std::atomic<uint32_t> next = 0;  // item not taken yet; ends above `items`, by one a thread
  std::mutex mutex{};
  std::condition_variable turned{};
  int32_t turn = 0;  // all items below have ended; kept for ascending jobs

  void work(int32_t thread);
  void wait_for_turn(int32_t item);
  void end_turn(int32_t item);
};

/// The job that this thread is inside of. A pointer fits into the room that every program keeps for
/// libraries that are loaded later; placed elsewhere, LeakSanitizer crashed on it.
[[gnu::tls_model("initial-exec")]] thread_local Job* current = nullptr;

void Job::work(int32_t thread) {
  Job* const outer = current;
  current = this;
  if (spread == Spread::by_thread) {
    for (int64_t item = thread; item < items; item += threads) {
      function(static_cast<int32_t>(item), 0, items, args);
    }
  } else {
    const auto end = static_cast<uint32_t>(items);
    for (uint32_t taken; (taken = next.fetch_add(1, std::memory_order_relaxed)) < end;) {
      const auto item = static_cast<int32_t>(taken);
      function(item, thread, threads, args);
      if (spread == Spread::ascending && threads > 1) end_turn(item);
    }
  }
  current = outer;
}

void Job::wait_for_turn(int32_t item) {
  std::unique_lock lock(mutex);
  turned.wait(lock, [&] { return turn >= item; });
}

/// An item's turn lasts until the item ends, whether or not it ran anything in order.
void Job::end_turn(int32_t item) {
  wait_for_turn(item);
  const std::lock_guard lock(mutex);
  turn = item + 1;
  turned.notify_all();
}

// ---- The pool -----------------------------------------------------------------------------------

class Pool {
 public:
  /// Runs the job on the calling thread and, as far as they can be had, on job.threads - 1 more.
  void run(Job& job);

 private:
  void start_helpers(int32_t count);
  void help(int32_t thread, uint64_t seen);

  std::mutex callers_;  // held for the whole of a job
  std::mutex mutex_;    // guards what follows
  std::condition_variable posted_, finished_;
  int32_t helpers_ = 0;  // threads that were started
  uint64_t jobs_ = 0;    // posted so far
  Job* job_ = nullptr;   // the last one, while it has helpers
  int32_t working_ = 0;  // its helpers that have not ended yet
  fenv_t environment_;   // its caller's, rounding above all
};

void Pool::start_helpers(int32_t count) {
  try {
    for (; helpers_ < count; ++helpers_) {
      std::thread([this, thread = helpers_ + 1, seen = jobs_] { help(thread, seen); }).detach();
    }
  } catch (const std::system_error&) {
    // No more to be had: the job is done by those that are there.
  }
}

void Pool::run(Job& job) {
  const std::lock_guard one_job(callers_);
  {
    const std::lock_guard lock(mutex_);
    start_helpers(job.threads - 1);
    job.threads = std::min(job.threads, helpers_ + 1);
    job_ = &job;
    working_ = job.threads - 1;
    std::fegetenv(&environment_);
    ++jobs_;
  }
  posted_.notify_all();
  job.work(0);
  std::unique_lock lock(mutex_);
  finished_.wait(lock, [this] { return working_ == 0; });
  job_ = nullptr;
}

/// The life of a thread of the pool. A job that is over, or has no use for it, is passed over.
void Pool::help(int32_t thread, uint64_t seen) {
  std::unique_lock lock(mutex_);
  for (;;) {
    posted_.wait(lock, [&] { return jobs_ != seen; });
    seen = jobs_;
    if (job_ == nullptr || thread >= job_->threads) continue;
    Job& job = *job_;
    std::fesetenv(&environment_);
    lock.unlock();
    job.work(thread);
    lock.lock();
    if (--working_ == 0) finished_.notify_one();
  }
}

/// Never destroyed, since its threads outlive everything. A forked process has none of them, and
/// its copy may be in any state: it begins with a new pool.
Pool& pool() {
  alignas(Pool) static char memory[sizeof(Pool)];
  static const bool made = [] {
    new (memory) Pool;
    pthread_atfork(nullptr, nullptr, [] { new (memory) Pool; });
    return true;
  }();
  static_cast<void>(made);
  return *std::launder(reinterpret_cast<Pool*>(memory));
}

// ---- How many -----------------------------------------------------------------------------------

/// 0 unless the text is a number above 0.
int32_t positive_number(const char* text) {
  if (text == nullptr || *text < '0' || *text > '9') return 0;
  char* end;
  errno = 0;
  const long value = std::strtol(text, &end, 10);
  if (*end != '\0') return 0;
  return static_cast<int32_t>(std::min<long>(value, most_threads));
}

int32_t processors() {
  cpu_set_t set;
  if (sched_getaffinity(0, sizeof set, &set) == 0) return CPU_COUNT(&set);
  return static_cast<int32_t>(sysconf(_SC_NPROCESSORS_ONLN));  // more of them than the set holds
}

int32_t default_count() {
  const int32_t wanted = positive_number(std::getenv("ORV_NUM_THREADS"));
  return std::clamp(wanted > 0 ? wanted : processors(), 1, most_threads);
}

std::atomic<int32_t>& count() {
  static std::atomic<int32_t> value = default_count();
  return value;
}

// ---- The tables ---------------------------------------------------------------------------------

int32_t one_thread() { return 1; }

/// An item's thread is taken: the rest of the pool belongs to the item's job.
int32_t pool_threads() { return current != nullptr ? 1 : count().load(); }

int32_t shares() { return fixed_shares; }

/// As many threads as the job asks for, if there are so many and so many items.
template <int32_t (*usable)()>
void run(Spread spread, int32_t items, int32_t threads, void* args, SSItemFunction function) {
  if (items <= 0) return;
  int32_t most = std::min(usable(), items);
  if (threads > 0) most = std::min(most, threads);
  Job job{spread, items, most, args, function};
  if (most == 1) {
    job.work(0);
  } else {
    pool().run(job);
  }
}

template <int32_t (*usable)()>
void run_items(int32_t items, int32_t threads, void* args, SSItemFunction function) {
  run<usable>(Spread::dynamic, items, threads, args, function);
}

template <int32_t (*usable)()>
void run_ascending(int32_t items, int32_t threads, void* args, SSItemFunction function) {
  run<usable>(Spread::ascending, items, threads, args, function);
}

template <int32_t (*usable)(), int32_t (*offered)()>
void run_threads(int32_t threads, void* args, SSItemFunction function) {
  const int32_t wanted = threads > 0 ? threads : offered();
  run<usable>(Spread::by_thread, wanted, wanted, args, function);
}

void run_in_order(int32_t item, int32_t thread, int32_t threads, void* args,
                  SSItemFunction function) {
  if (current != nullptr && current->threads > 1) current->wait_for_turn(item);
  function(item, thread, threads, args);
}

/// `offered` threads, made up by those that are usable.
template <int32_t (*usable)(), int32_t (*offered)() = usable>
constexpr SSThreadServices services = {run_items<usable>, run_ascending<usable>,
                                       run_threads<usable, offered>, run_in_order, offered};

}  // namespace

const SSThreadServices* orv_threads_serial() { return &services<one_thread>; }

const SSThreadServices* orv_threads_pool() { return &services<pool_threads>; }

const SSThreadServices* orv_threads_reproducible() { return &services<pool_threads, shares>; }

void orv_threads_set_count(int32_t threads) {
  count() = threads > 0 ? std::min(threads, most_threads) : default_count();
}
