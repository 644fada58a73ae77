// SPDX-License-Identifier: MIT
// Times the C++ face beside the calls of the C interface that it makes, and its words beside the
// C++ library's: seconds an element.
//
//   WHO/WORK/PRECISION/N      WHO is "ours" (the face), "c" or "std"; N elements a call
#include <benchmark/benchmark.h>
#include <orv/orv.hpp>

#include <functional>
#include <random>
#include <string>
#include <vector>

namespace orv_bench {
namespace {

void add(const std::string& name, size_t elements, const std::function<void()>& run) {
  benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) run();
    using benchmark::Counter;
    state.counters["element"] =
        Counter(static_cast<double>(elements) * static_cast<double>(state.iterations()),
                Counter::kIsRate | Counter::kInvert);
  });
}

/// A pair of calls that do the same.
void add_pair(const std::string& work, size_t n, const std::function<void()>& face,
              const std::function<void()>& c) {
  const std::string suffix = work + '/' + std::to_string(n);
  add("ours/" + suffix, n, face);
  add("c/" + suffix, n, c);
}

/// Vectors that the benchmarks use to the program's end.
template <class T>
std::vector<T>& numbers(size_t n) {
  orv::stream s(orv::mt19937);
  auto& x = *new std::vector<T>(n);
  s.fill(x);
  return x;
}

void add_functions(size_t n) {
  auto& x = numbers<double>(n);
  auto& y = numbers<double>(n);
  auto& fx = numbers<float>(n);
  auto& fy = numbers<float>(n);
  const auto count = static_cast<int32_t>(n);
  add_pair(
      "exp/double", n, [&] { orv::exp(x, y); },
      [&, count] {
        orv_qem_kernel_dExp_ttab[orv_qem_kernel_GetTTableIndex()](count, x.data(), y.data());
      });
  add_pair(
      "exp_ha/double", n, [&] { orv::exp(x, y, orv::ha); },
      [&, count] { _qemdExp(count, x.data(), y.data()); });
  add_pair(
      "add/float", n, [&] { orv::add(fx, fy, fy, orv::ha); },
      [&, count] { _qemsAdd(count, fx.data(), fy.data(), fy.data()); });
  auto& s = *new orv::stream(orv::mt19937);
  add_pair(
      "normal/double", n, [&] { orv::sample(s, orv::normal{}, y); },
      [&, count] { _zokdRngGaussian(RNG_GAUSSIAN_ICDF, s.get(), count, y.data(), 0, 1); });
  add_pair(
      "uniform/float", n, [&] { s.fill(fy); },
      [&, count] { _zoksRngUniform(0, s.get(), count, fy.data(), 0, 1); });
}

void add_mean(size_t n) {
  auto& x = numbers<double>(n * 8);
  add_pair(
      "mean_of_8/double", n * 8,
      [&, n] { benchmark::DoNotOptimize(orv::dataset(orv::table(x.data(), n, 8)).mean()); },
      [&, n] {
        const int64_t p = 8, count = static_cast<int64_t>(n), layout = SS_COLUMNS;
        double mean[8];
        SSTask* task = nullptr;
        __zokdSSNewTask(&task, &p, &count, &layout, x.data(), nullptr, nullptr, 1);
        __zokdSSEditTask(task, SS_PARAM_MEAN, mean);
        _zokdSSBasic(task, SS_EST_MEAN, SS_METHOD_ONE_PASS, orv_threads_reproducible());
        __zokSSDeleteTask(&task);
        benchmark::DoNotOptimize(mean);
      });
}

template <class Generator>
void add_words(const std::string& name, Generator& words) {
  constexpr size_t n = 4096;
  add(name + "/uint32/" + std::to_string(n), n, [&words] {
    uint32_t sum = 0;
    for (size_t i = 0; i < n; ++i) sum += static_cast<uint32_t>(words());
    benchmark::DoNotOptimize(sum);
  });
}

}  // namespace
}  // namespace orv_bench

int main(int argc, char** argv) {
  using namespace orv_bench;
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  for (const size_t n : {64, 256, 4096}) add_functions(n);
  for (const size_t n : {1000, 100000}) add_mean(n);
  orv::stream stream(orv::mt19937), source(orv::mt19937);
  orv::words words(source);
  std::mt19937 standard;
  add_words("ours/word", words);
  add_words("ours/word_one_by_one", stream);
  add_words("std/word", standard);
  benchmark::RunSpecifiedBenchmarks();
}
