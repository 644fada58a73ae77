// SPDX-License-Identifier: MIT
// Times missing values and quantiles of streams.
//
//   em/iteration     of 10^4 observations of 10 variables, 10 % missing, with the ratio to a
//                    covariance of the same data without a missing value ("covariances")
//   impute/iteration of data augmentation, likewise
//   stream/EPSILON   seconds a value, of 10^7; MB held at the end beside 11 / (2 e) log2(2 e n)
//                    tuples of 24 bytes, the bound of Greenwald and Khanna (2001)
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <orv/ss.h>
#include <orv/threads.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr int64_t p = 10, n = 10000, columns = SS_COLUMNS, parameters = 5;

/// Of this thread, the only one.
template <class F>
double seconds(F f) {
  const auto now = [] {
    timespec t;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) + 1e-9 * static_cast<double>(t.tv_nsec);
  };
  const double start = now();
  f();
  return now() - start;
}

/// Smallest of several runs of each, in turn.
template <class F, class G>
std::pair<double, double> smallest(int runs, F f, G g) {
  std::pair<double, double> best = {1e9, 1e9};
  for (int i = 0; i < runs; ++i) {
    best = {std::min(best.first, seconds(f)), std::min(best.second, seconds(g))};
  }
  return best;
}

struct Data {
  std::vector<double> whole, gaps;
  int64_t missing = 0;

  Data() {
    std::mt19937_64 random(1);
    std::normal_distribution<double> normal;
    for (int64_t i = 0; i < n; ++i) {
      const double factor = normal(random);
      for (int64_t j = 0; j < p; ++j) {
        whole.push_back(factor + normal(random));
        const bool gone = random() % 10 == 0;
        gaps.push_back(gone ? orv_missing_d() : whole.back());
        missing += gone;
      }
    }
  }
};

SSTask task_of(const std::vector<double>& x, const double* params) {
  SSTask task = {};
  task.int_is_64 = task.is_double = 1;
  task.dimension = &p;
  task.observation_count = &n;
  task.observation_storage = &columns;
  task.observations = x.data();
  task.missing_param_count = &parameters;
  task.missing_params = params;
  return task;
}

double covariance_seconds(const Data& data) {
  double mean[p], cov[p * p];
  SSTask task = task_of(data.whole, nullptr);
  task.mean = mean;
  task.cov = cov;
  const auto run = [&] { _zokdSSBasic(&task, SS_EST_COV, SS_METHOD_FAST, orv_threads_serial()); };
  return smallest(30, run, run).first;
}

/// An iteration is what ten more of them take.
template <class Run>
void iterations(benchmark::State& state, int few, int many, Run run) {
  const Data data;
  double best = 1e9;
  for ([[maybe_unused]] auto _ : state) {
    const auto [a, b] = smallest(
        7, [&] { run(data, few); }, [&] { run(data, many); });
    best = std::min(best, (b - a) / (many - few));
  }
  state.counters["iteration_us"] = 1e6 * best;
  state.counters["covariances"] = best / covariance_seconds(data);
}

void em(benchmark::State& state) {
  iterations(state, 1, 11, [](const Data& data, int limit) {
    const double params[] = {double(limit), 1, 1e-300, 1, double(data.missing)};
    double moments[p * (p + 3) / 2];
    int32_t done;
    SSTask task = task_of(data.gaps, params);
    _zokdSSMissingMoments(&task, moments, &done);
  });
}

void impute(benchmark::State& state) {
  iterations(state, 1, 11, [](const Data& data, int chain) {
    const double params[] = {1, double(chain), 1e-3, 1, double(data.missing)};
    std::vector<double> values(static_cast<size_t>(data.missing));
    SSTask task = task_of(data.gaps, params);
    task.simulated_count = &data.missing;
    task.simulated_values = values.data();
    _zokdSSMissingValues(&task, 0, SS_METHOD_MULTIPLE_IMPUTATION, orv_threads_serial());
  });
}

template <class T>
void stream(benchmark::State& state, double e) {
  static const std::vector<T> x = [] {
    std::mt19937_64 random(1);
    std::normal_distribution<double> normal;
    std::vector<T> values(10000000);
    for (T& v : values) v = static_cast<T>(normal(random));
    return values;
  }();
  const auto epsilon = static_cast<T>(e), order = T(0.5);
  T answer = 0;
  const auto count = static_cast<int64_t>(x.size()), one = int64_t{1};
  const auto entry = sizeof(T) == 8 ? _zokdSSStreamQuantiles : _zoksSSStreamQuantiles;
  double best = 1e9, bytes = 0;
  for ([[maybe_unused]] auto _ : state) {
    SSTask task = {};
    task.int_is_64 = 1;
    task.dimension = &one;
    task.observation_count = &count;
    task.observation_storage = &columns;
    task.observations = x.data();
    task.stream_params = &epsilon;
    task.stream_orders = &order;
    task.stream_quantiles = &answer;
    task.stream_param_count = task.stream_order_count = &one;
    const struct mallinfo2 before = mallinfo2();
    best = std::min(best,
                    seconds([&] { entry(&task, 0, SS_METHOD_STREAM_ADD, orv_threads_serial()); }));
    const struct mallinfo2 after = mallinfo2();
    bytes = static_cast<double>(after.uordblks + after.hblkhd - before.uordblks - before.hblkhd);
    while (task.cleanup_count > 0) task.cleanup_hooks[--task.cleanup_count](&task);
  }
  const auto values = static_cast<double>(count);
  state.counters["value_ns"] = 1e9 * best / values;
  state.counters["MB"] = bytes / 1e6;
  state.counters["theory_MB"] = 11 / (2 * e) * std::log2(2 * e * values) * 24 / 1e6;
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  benchmark::RegisterBenchmark("em/iteration", em)->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("impute/iteration", impute)->Unit(benchmark::kMillisecond);
  for (const double e : {1e-2, 1e-3, 1e-4}) {
    const std::string name = "stream/" + std::to_string(e).substr(0, 6);
    benchmark::RegisterBenchmark((name + "/d").c_str(), stream<double>, e)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark((name + "/s").c_str(), stream<float>, e)
        ->Unit(benchmark::kMillisecond);
  }
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
