// SPDX-License-Identifier: MIT
// Times sorting, selection, quantiles and sorted data beside the C++ standard library: seconds an
// element.
//
//   WHO/WHAT/PRECISION/N      one array of N elements, other ones in each run
//   WHO/WHAT/PRECISION/NxP    a data set of P variables with N observations
//
// Results are checked first, and a contender that fails is not timed. Copying is not timed.
#include <benchmark/benchmark.h>
#include <orv/threads.h>
#include <stdio.h>
#include <orv/task.hpp>

#include <algorithm>
#include <chrono>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace orv_bench {
namespace {

constexpr int quantile_count = 9;

template <class T>
using Entries = orv::entries<T>;

int faults = 0;

/// Times run(), each time after prepare().
void add(const std::string& name, double elements, bool verified,
         const std::function<void()>& prepare, const std::function<void()>& run) {
  if (!verified) {
    fprintf(stderr, "%s is not timed: its result is wrong\n", name.c_str());
    ++faults;
    return;
  }
  const auto body = [=](benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
      prepare();
      const auto start = std::chrono::steady_clock::now();
      run();
      const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
      state.SetIterationTime(time.count());
    }
    using benchmark::Counter;
    state.counters["element"] = Counter(elements * static_cast<double>(state.iterations()),
                                        Counter::kIsRate | Counter::kInvert);
  };
  benchmark::RegisterBenchmark(name.c_str(), body)->UseManualTime();
}

/// Normal deviates.
template <class T>
std::vector<T> make_data(size_t size) {
  std::mt19937_64 random(4711);
  std::normal_distribution<double> normal;
  std::vector<T> x(size);
  for (auto& v : x) v = static_cast<T>(normal(random));
  return x;
}

/// Sorters and selections of one array.
template <class T>
class ArrayContest {
 public:
  explicit ArrayContest(int n)
      : n_(n), data_(make_data<T>(std::max(n, 1000000))), a_(n), work_(n), sorted_(n) {
    refresh(0);
    sorted_ = a_;
    std::sort(sorted_.begin(), sorted_.end());
  }

  static void add_all(int n) {
    // Registered benchmarks use it to the end of the program.
    auto& contest = *new ArrayContest(n);
    auto& a = contest.a_;
    contest.add_sorter("std/sort", [&a] { std::sort(a.begin(), a.end()); });
    contest.add_sorter("ours/radix_sort",
                       [&, n] { Entries<T>::radix_sort(a.data(), contest.work_.data(), n); });
    contest.add_sorter("ours/quicksort", [&a, n] { Entries<T>::sort(n, a.data()); });
    contest.add_selection("std/median",
                          [&a, n] { std::nth_element(a.begin(), a.begin() + n / 2, a.end()); });
    contest.add_selection("ours/median", [&a, n] { Entries<T>::select(n, a.data(), n / 2); });
  }

 private:
  std::string full_name(const char* name) const {
    return std::string(name) + '/' + Entries<T>::name + '/' + std::to_string(n_);
  }
  /// A small array that comes again and again would be learnt by heart by the branch predictor.
  void refresh(size_t first) {
    std::copy_n(data_.begin() + first, n_, a_.begin());
    next_ = (first + n_) % data_.size();
  }

  void add_sorter(const char* name, const std::function<void()>& run) {
    refresh(0);
    run();
    add(
        full_name(name), n_, a_ == sorted_, [this] { refresh(next_); }, run);
  }
  void add_selection(const char* name, const std::function<void()>& run) {
    refresh(0);
    run();
    add(
        full_name(name), n_, a_[n_ / 2] == sorted_[n_ / 2], [this] { refresh(next_); }, run);
  }

  int n_;
  size_t next_ = 0;
  std::vector<T> data_, a_, work_, sorted_;
};

/// Nine quantiles, and sorted data, of each variable of a data set.
template <class T>
class StatisticsContest {
 public:
  StatisticsContest(int n, int p, int layout)
      : n_(n),
        p_(p),
        layout_(layout),
        data_(make_data<T>(size_t(n) * p)),
        sorted_(data_.size()),
        quantiles_(p * quantile_count) {
    for (int i = 0; i < quantile_count; ++i)
      orders_.push_back(static_cast<T>(i + 1) / (quantile_count + 1));
    Entries<T>::new_task(&task_, &p_, &n_, &layout_, data_.data(), nullptr, nullptr, 0);
    Entries<T>::edit_quantiles(task_, &order_count_, orders_.data(), quantiles_.data(),
                               sorted_.data(), &layout_);
  }

  static void add_all(int n, int p, int layout) {
    auto& contest = *new StatisticsContest(n, p, layout);
    contest.add_contender("std/quantiles", true, [&contest] { contest.select_by_standard(); });
    contest.add_contender("std/order_stats", false, [&contest] { contest.sort_by_standard(); });
    for (int threads : {1, 2}) {
      const auto suffix = threads == 1 ? "" : "_two_threads";
      const auto run = [&contest, threads](uint64_t estimate) {
        orv_threads_set_count(threads);
        Entries<T>::quantiles(contest.task_, estimate, SS_METHOD_FAST, orv_threads_pool());
      };
      contest.add_contender(std::string("ours/quantiles") + suffix, true,
                            [run] { run(SS_EST_QUANTILES); });
      contest.add_contender(std::string("ours/order_stats") + suffix, false,
                            [run] { run(SS_EST_ORDER_STATS); });
    }
  }

 private:
  std::vector<T> variable(int j) const {
    std::vector<T> x(n_);
    for (int i = 0; i < n_; ++i)
      x[i] = layout_ == SS_ROWS ? data_[size_t(j) * n_ + i] : data_[size_t(i) * p_ + j];
    return x;
  }
  size_t place(int j, int i) const {
    return layout_ == SS_ROWS ? size_t(j) * n_ + i : size_t(i) * p_ + j;
  }
  T between(T x, T next, int i) const {
    const T f = static_cast<T>(n_ - 1) * orders_[i], t = f - static_cast<T>(static_cast<int>(f));
    return (1 - t) * x + t * next;
  }

  void select_by_standard() {
    for (int j = 0; j < p_; ++j) {
      auto x = variable(j);
      auto from = x.begin();
      for (int i = 0; i < quantile_count; ++i) {
        const auto at = x.begin() + static_cast<int>(static_cast<T>(n_ - 1) * orders_[i]);
        std::nth_element(from, at, x.end());
        quantiles_[j * quantile_count + i] = between(*at, *std::min_element(at + 1, x.end()), i);
        from = at + 1;
      }
    }
  }
  void sort_by_standard() {
    for (int j = 0; j < p_; ++j) {
      auto x = variable(j);
      std::sort(x.begin(), x.end());
      for (int i = 0; i < n_; ++i) sorted_[place(j, i)] = x[i];
    }
  }

  bool verified(bool of_quantiles) const {
    for (int j = 0; j < p_; ++j) {
      auto x = variable(j);
      std::sort(x.begin(), x.end());
      for (int i = 0; of_quantiles && i < quantile_count; ++i) {
        const int k = static_cast<int>(static_cast<T>(n_ - 1) * orders_[i]);
        if (quantiles_[j * quantile_count + i] != between(x[k], x[k + 1], i)) return false;
      }
      for (int i = 0; !of_quantiles && i < n_; ++i) {
        if (sorted_[place(j, i)] != x[i]) return false;
      }
    }
    return true;
  }

  void add_contender(const std::string& name, bool of_quantiles, const std::function<void()>& run) {
    std::fill(sorted_.begin(), sorted_.end(), T(0));
    std::fill(quantiles_.begin(), quantiles_.end(), T(0));
    run();
    add(
        name + '/' + Entries<T>::name + (layout_ == SS_ROWS ? "/rows/" : "/columns/") +
            std::to_string(n_) + 'x' + std::to_string(p_),
        static_cast<double>(data_.size()), verified(of_quantiles), [] {}, run);
  }

  int n_, p_, layout_;
  int order_count_ = quantile_count;
  std::vector<T> data_, sorted_, quantiles_, orders_;
  SSTask* task_ = nullptr;
};

template <class T>
void add_precision() {
  for (const int n : {1000, 1000000}) ArrayContest<T>::add_all(n);
  StatisticsContest<T>::add_all(1000000, 10, SS_ROWS);
  StatisticsContest<T>::add_all(1000000, 10, SS_COLUMNS);
}

}  // namespace
}  // namespace orv_bench

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  orv_bench::add_precision<double>();
  orv_bench::add_precision<float>();
  benchmark::RunSpecifiedBenchmarks();
  return orv_bench::faults == 0 ? 0 : 1;
}
