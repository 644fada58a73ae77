// SPDX-License-Identifier: MIT
// Times statistics and their peers: seconds an element of a table of ten million numbers.
//
//   WHO/WORK/PRECISION/LAYOUT/P/THREADS      n is 10^7 / P; for order statistics P is 1, n 10^6;
//                                            for robust covariance P is 10, n 10^4 or 50, n 10^5
//
// WHO is "ours" or a peer; peers have one thread. "ours/covariance" is by matrix routines,
// "ours/covariance_one_pass" by updates. Results are checked against plain loops first, and a
// contender that fails is not timed.
#include <benchmark/benchmark.h>
#include <orv/threads.h>
#include <stdio.h>
#include <string.h>
#include <orv/task.hpp>

#include <algorithm>
#include <memory>
#include <random>

#include "statistics_peers.hpp"

namespace orv_bench {
namespace {

constexpr int32_t all_elements = 10000000, one_column = 1000000;

// ---- Data, and what plain loops find in them ---------------------------------------------------

/// Uniform on [0, 1), 24 bits; the same for all tables.
template <class T>
const T* numbers() {
  static const std::vector<T> all = [] {
    std::vector<T> x(all_elements);
    std::mt19937 random;
    for (T& v : x) v = static_cast<T>(static_cast<double>(random() >> 8) * 0x1p-24);
    return x;
  }();
  return all.data();
}

template <class T>
Truth find_truth(const Table<T>& t) {
  const int32_t p = t.p, n = t.n;
  const Truth::Values zeros(p), squares(p * p);
  Truth r{zeros, zeros, zeros, zeros, zeros, zeros, zeros, squares, squares, {}, {}, {}, {}};
  std::vector<double> group_mean(groups * p), group_size(groups), d(p);
  for (int32_t j = 0; j < p; ++j) r.least[j] = r.largest[j] = t(0, j);
  for (int32_t i = 0; i < n; ++i) {
    const int32_t g = group_of(i);
    ++group_size[g];
    for (int32_t j = 0; j < p; ++j) {
      const double x = t(i, j);
      group_mean[g * p + j] += x;
      r.mean[j] += x / n, r.raw2[j] += x * x / n;
      r.raw3[j] += x * x * x / n, r.raw4[j] += x * x * x * x / n;
      r.least[j] = std::min(r.least[j], x), r.largest[j] = std::max(r.largest[j], x);
    }
  }
  const auto add_product = [&](double* c, double factor) {
    for (int32_t j = 0; j < p; ++j) {
      for (int32_t k = 0; k < p; ++k) c[j * p + k] += factor * d[j] * d[k];
    }
  };
  for (int32_t i = 0; i < n; ++i) {
    for (int32_t j = 0; j < p; ++j) d[j] = t(i, j) - r.mean[j];
    add_product(r.covariance.data(), 1);
  }
  r.pooled = r.covariance;
  for (int32_t g = 0; g < groups; ++g) {
    for (int32_t j = 0; j < p; ++j) d[j] = group_mean[g * p + j] / group_size[g] - r.mean[j];
    add_product(r.pooled.data(), -group_size[g]);
  }
  for (double& c : r.covariance) c /= n - 1;
  for (double& c : r.pooled) c /= n - groups;
  for (int32_t j = 0; j < p; ++j) r.variance[j] = r.covariance[j * p + j];
  if (p == 1) {
    r.sorted.assign(t.x, t.x + n);
    std::sort(r.sorted.begin(), r.sorted.end());
    for (const double order : orders) {
      const double place = (n - 1) * order;
      const auto k = static_cast<int32_t>(place);
      r.quantiles.push_back(r.sorted[k] + (place - k) * (r.sorted[k + 1] - r.sorted[k]));
    }
  }
  return r;
}

template <class T>
LazyTruth lazy_truth(const Table<T>& t) {
  const auto found = std::make_shared<std::unique_ptr<Truth>>();
  return [=]() -> const Truth& {
    if (*found == nullptr) *found = std::make_unique<Truth>(find_truth(t));
    return **found;
  };
}

// ---- Ours ---------------------------------------------------------------------------------------

template <class T>
using Entries = orv::entries<T>;

/// A result, and what it must be.
struct Result {
  int64_t parameter;
  Truth::Values Truth::*expected;
};

/// A call of an entry, with a place for each result.
struct Work {
  const char* name;
  int32_t (*entry)(SSTask*, uint64_t, uint64_t, const SSThreadServices*);
  uint64_t estimates, method;
  std::vector<Result> results;
};

template <class T>
class Ours {
 public:
  Ours(const Table<T>& t, const Work& work, const LazyTruth& truth, int32_t threads)
      : work_(work),
        truth_(truth),
        threads_(threads),
        sizes_{t.p, t.n, t.rows ? SS_ROWS : SS_COLUMNS} {
    Entries<T>::new_task(&task_, &sizes_[0], &sizes_[1], &sizes_[2], t.x, nullptr, nullptr, 0);
    results_.resize(work.results.size());
    for (size_t r = 0; r < results_.size(); ++r) {
      // As large as any of them; extremes begin with the first observation.
      results_[r].resize(std::max(t.p * t.p, t.p == 1 ? t.n : 0));
      for (int32_t j = 0; j < t.p; ++j) results_[r][j] = t(0, j);
      Entries<T>::edit(task_, work.results[r].parameter, results_[r].data());
    }
    for (const int64_t storage : {SS_PARAM_COV_STORAGE, SS_PARAM_POOLED_COV_STORAGE}) {
      __zokiSSEditTask(task_, storage, &full_);
    }
    for (int32_t i = 0; work.estimates == SS_EST_POOLED && i < t.n; ++i) {
      groups_.push_back(group_of(i));
    }
    __zokiSSEditTask(task_, SS_PARAM_GROUP_INDICES, groups_.data());
    orders_.assign(std::begin(orders), std::end(orders));
    Entries<T>::edit(task_, SS_PARAM_QUANT_ORDERS, orders_.data());
    __zokiSSEditTask(task_, SS_PARAM_QUANT_ORDER_COUNT, &order_count_);
    __zokiSSEditTask(task_, SS_PARAM_ORDER_STATS_STORAGE, &sizes_[2]);
  }
  ~Ours() { __zokSSDeleteTask(&task_); }

  void run() {
    orv_threads_set_count(threads_);
    status_ = work_.entry(task_, work_.estimates, work_.method,
                          threads_ == 1 ? orv_threads_serial() : orv_threads_pool());
  }
  bool verified() const {
    bool good = status_ == SS_OK;
    for (size_t r = 0; r < results_.size(); ++r) {
      good = good && near(results_[r].data(), truth_().*work_.results[r].expected);
    }
    return good;
  }

 private:
  Work work_;
  LazyTruth truth_;
  int32_t threads_, status_ = -1;
  int32_t sizes_[3], full_ = SS_MATRIX_FULL, order_count_ = std::size(orders);
  SSTask* task_ = nullptr;
  std::vector<std::vector<T>> results_;
  std::vector<int32_t> groups_;
  std::vector<T> orders_;
};

template <class T>
std::vector<Work> all_work(int32_t p) {
  using E = Entries<T>;
  const uint64_t fast = SS_METHOD_FAST, one_pass = SS_METHOD_ONE_PASS;
  const Result mean{SS_PARAM_MEAN, &Truth::mean}, raw2{SS_PARAM_RAW_MOMENT_2, &Truth::raw2};
  const Result cov{SS_PARAM_COV, &Truth::covariance};
  if (p == 1) {
    return {{"quantiles",
             E::quantiles,
             SS_EST_QUANTILES,
             fast,
             {{SS_PARAM_QUANTILES, &Truth::quantiles}}},
            {"order_statistics",
             E::quantiles,
             SS_EST_ORDER_STATS,
             fast,
             {{SS_PARAM_ORDER_STATS, &Truth::sorted}}}};
  }
  std::vector<Work> work = {
      {"covariance", E::basic, SS_EST_COV, fast, {mean, cov}},
      {"covariance_one_pass", E::basic, SS_EST_COV, one_pass, {mean, cov}},
      {"pooled",
       E::pooled_covariance,
       SS_EST_POOLED,
       one_pass,
       {{SS_PARAM_POOLED_MEAN, &Truth::mean}, {SS_PARAM_POOLED_COV, &Truth::pooled}}}};
  if (p != 10) return work;
  const Work single[] = {
      {"mean", E::basic, SS_EST_MEAN, fast, {mean}},
      {"moments",
       E::basic,
       SS_EST_MEAN | SS_EST_RAW2 | SS_EST_RAW3 | SS_EST_RAW4,
       fast,
       {mean, raw2, {SS_PARAM_RAW_MOMENT_3, &Truth::raw3}, {SS_PARAM_RAW_MOMENT_4, &Truth::raw4}}},
      {"variance",
       E::basic,
       SS_EST_MEAN | SS_EST_RAW2 | SS_EST_CEN2,
       fast,
       {mean, raw2, {SS_PARAM_CENTRAL_MOMENT_2, &Truth::variance}}},
      {"maximum", E::minmax, SS_EST_MAX, fast, {{SS_PARAM_MAXIMUM, &Truth::largest}}},
      {"minmax",
       E::minmax,
       SS_EST_MIN | SS_EST_MAX,
       fast,
       {{SS_PARAM_MINIMUM, &Truth::least}, {SS_PARAM_MAXIMUM, &Truth::largest}}}};
  work.insert(work.end(), std::begin(single), std::end(single));
  return work;
}

// ---- Robust covariance --------------------------------------------------------------------------

/// About normal, correlated, and a tenth of the observations far away.
template <class T>
std::vector<T> contaminated(int32_t p, int32_t n) {
  std::vector<T> x;
  std::mt19937 random;
  const auto normal = [&] {
    double sum = -6;
    for (int k = 0; k < 12; ++k) sum += static_cast<double>(random()) * 0x1p-32;
    return sum;
  };
  for (int32_t i = 0; i < n; ++i) {
    const double common = 0.5 * normal() + (i % 10 == 0 ? 8 : 0);
    for (int32_t j = 0; j < p; ++j) x.push_back(static_cast<T>(normal() + common));
  }
  return x;
}

/// OGK is the start of the iterations, which go on to an accuracy of 10^-5 deviations. Of what they
/// come to, only that it is near is known.
template <class T>
class Robust {
 public:
  Robust(int32_t p, int32_t n) : p_(p), n_(n), x_(contaminated<T>(p, n)), mean_(p), cov_(p * p) {
    task_.dimension = &p_;
    task_.observation_count = &n_;
    task_.observation_storage = &layout_;
    task_.observations = x_.data();
    task_.robust_param_count = &four_;
    task_.robust_params = parameters_;
    task_.robust_mean = mean_.data();
    task_.robust_cov = cov_.data();
    task_.robust_cov_storage = &full_;
  }
  Table<T> table() const { return {x_.data(), p_, n_, false}; }

  void run(int32_t threads, bool iterate) {
    orv_threads_set_count(threads);
    parameters_[3] = iterate ? 100 : 0;
    status_ = Entries<T>::robust_covariance(
        &task_, 0, SS_METHOD_TBS, threads == 1 ? orv_threads_serial() : orv_threads_pool());
  }
  bool verified(const LazyTruth& truth, bool iterate) const {
    if (status_ != SS_OK) return false;
    if (!iterate) return near(cov_.data(), truth().robust_cov);
    return std::all_of(mean_.begin(), mean_.end(), [](T m) { return m > T(-0.1) && m < T(0.1); });
  }

 private:
  int32_t p_, n_, layout_ = SS_COLUMNS, full_ = SS_MATRIX_FULL, four_ = 4, status_ = -1;
  T parameters_[4] = {T(0.5), T(0.001), T(1e-10), 0};
  std::vector<T> x_, mean_, cov_;
  SSTask task_ = {};
};

// ---- The benchmarks -----------------------------------------------------------------------------

int faults = 0;

/// Checks the contender when it is first timed.
void add(const Contender& contender, const std::string& shape, double elements) {
  const std::string name = contender.name + shape;
  const auto checked = std::make_shared<bool>(false);
  benchmark::RegisterBenchmark(
      name.c_str(),
      [=](benchmark::State& state) {
        if (!*checked) {
          contender.run();
          if (!contender.verified()) {
            fprintf(stderr, "%s is not timed: its results are wrong\n", name.c_str());
            ++faults;
            return state.SkipWithError("wrong results");
          }
          *checked = true;
        }
        for ([[maybe_unused]] auto _ : state) {
          contender.run();
          benchmark::ClobberMemory();
        }
        using benchmark::Counter;
        state.counters["element"] = Counter(elements * static_cast<double>(state.iterations()),
                                            Counter::kIsRate | Counter::kInvert);
      })
      ->UseRealTime()  // of two threads
      ->Unit(benchmark::kMillisecond);
}

template <class T>
void add_table(int32_t p, bool rows) {
  const int32_t n = p == 1 ? one_column : all_elements / p;
  const Table<T> table{numbers<T>(), p, n, rows};
  const LazyTruth truth = lazy_truth(table);
  const std::string shape = std::string(sizeof(T) == 8 ? "/d" : "/s") +
                            (rows ? "/rows/" : "/columns/") + std::to_string(p);
  const double elements = static_cast<double>(n) * p;
  for (const Contender& peer : statistics_peers(table, truth)) add(peer, shape + "/1", elements);
  for (const Work& work : all_work<T>(p)) {
    const bool threaded =
        work.entry == Entries<T>::basic || (work.entry == Entries<T>::pooled_covariance && p > 10);
    for (int32_t threads = 1; threads <= (threaded ? 2 : 1); ++threads) {
      // Made when it is needed: groups take memory.
      const auto ours = std::make_shared<std::unique_ptr<Ours<T>>>();
      const auto run = [=] {
        if (*ours == nullptr) *ours = std::make_unique<Ours<T>>(table, work, truth, threads);
        (*ours)->run();
      };
      add({std::string("ours/") + work.name, run, [=] { return (*ours)->verified(); }},
          shape + "/" + std::to_string(threads), elements);
    }
  }
}

template <class T>
void add_robust(int32_t p, int32_t n) {
  const auto data = std::make_shared<std::unique_ptr<Robust<T>>>();
  const auto get = [=]() -> Robust<T>& {
    if (*data == nullptr) *data = std::make_unique<Robust<T>>(p, n);
    return **data;
  };
  const auto found = std::make_shared<Truth>();
  const LazyTruth truth = [=]() -> const Truth& {
    if (found->robust_cov.empty()) {
      const Robust<double> same(p, n);
      plain_ogk(same.table(), &found->robust_mean, &found->robust_cov);
    }
    return *found;
  };
  const std::string shape =
      std::string(sizeof(T) == 8 ? "/d" : "/s") + "/columns/" + std::to_string(p);
  const double elements = static_cast<double>(n) * p;
  for (const bool iterate : {false, true}) {
    for (const int32_t threads : {1, 2}) {
      add({iterate ? "ours/robust_tbs" : "ours/robust_ogk", [=] { get().run(threads, iterate); },
           [=] { return get().verified(truth, iterate); }},
          shape + "/" + std::to_string(threads), elements);
    }
  }
  if constexpr (sizeof(T) == 8) {
    if (p > 10) return;  // takes long
    const auto own = std::make_shared<Robust<double>>(p, n);
    Contender peer = plain_ogk_peer(own->table(), truth);
    peer.run = [own, run = peer.run] { run(); };  // keeps the table
    add(peer, shape + "/1", elements);
  }
}

void add_all() {
  for (const std::string& name : missing_statistics_peers()) {
    fprintf(stderr, "left out, not installed for this word size: %s\n", name.c_str());
  }
  for (const bool rows : {false, true}) {
    for (const int32_t p : {3, 10, 50, 200}) {
      add_table<double>(p, rows);
      add_table<float>(p, rows);
    }
  }
  add_robust<double>(10, 10000);
  add_robust<float>(10, 10000);
  add_robust<double>(50, 100000);
  add_robust<float>(50, 100000);
  add_table<double>(1, false);
  add_table<float>(1, false);
}

}  // namespace
}  // namespace orv_bench

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  orv_bench::add_all();
  benchmark::RunSpecifiedBenchmarks();
  return orv_bench::faults == 0 ? 0 : 1;
}
