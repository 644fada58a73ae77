// Times every kernel that is ready, and its peers, on the same arguments.
//
//   WHO/FUNCTION_LEVEL/N            independent calls of N elements
//   WHO/FUNCTION_LEVEL/1/dependent  each call waits for the result before it
//
// WHO is "ours", or a peer, which has no level. With N = 0 one of our kernels does all that a call
// costs besides elements. Results are checked first, and a contender with a wrong one is not timed.
#include <benchmark/benchmark.h>
#include <math.h>
#include <stdio.h>
#include <string.h>

#include <random>

#include "peers.hpp"

namespace orv_bench {
namespace {

using orv_test::Kernel;

/// Elements, few enough to stay in the first-level cache with the results, too many to be learnt by
/// heart.
constexpr int32_t pool = 2000;
/// Moved data lies as far apart.
constexpr int64_t stride = 2;

/// Arguments for contenders of one signature, and room for results.
template <class R>
class Calls {
 public:
  Calls(const orv_call::Signature& signature, double low, double high) : signature_(signature) {
    std::mt19937_64 bits(20240229);
    for (std::vector<R>& input : in_) {
      input.resize(pool * 2 * stride);
      for (R& x : input) {
        x = static_cast<R>(low + (high - low) * static_cast<double>(bits() >> 11) * 0x1p-53);
      }
    }
  }

  /// A call on `n` elements from `i` on, with results at the start of `out`.
  void call(const Contender& c, int32_t i, int32_t n, std::vector<R> (&out)[2]) const {
    static constexpr double scalars[] = {2.3, -1.5, 2.25, 3.5};
    const size_t from = static_cast<size_t>(i) * signature_.input_parts;
    c.call({.n = n,
            .inputs = {&in_[0][from], &in_[1][from]},
            .results = {out[0].data(), out[1].data()},
            .scalars = scalars,
            .increment = stride});
  }

  /// All results, NaN where nothing was written.
  std::vector<R> results(const Contender& c) const {
    std::vector<R> out[2];
    for (std::vector<R>& result : out) result.assign(pool * 2 * stride, NAN);
    call(c, 0, pool, out);
    out[0].insert(out[0].end(), out[1].begin(), out[1].end());
    return out[0];
  }

  int parts() const { return signature_.result_parts; }

 private:
  orv_call::Signature signature_;
  std::vector<R> in_[2];
};

/// Loose enough for every honest implementation of the level.
template <class R>
double bound(const std::string& level) {
  if (sizeof(R) == sizeof(float)) return level == "EP" ? 1e-3 : 1e-5;
  return level == "EP" ? 1e-7 : 1e-13;
}

/// Each result within the bound of the reference's, by its magnitude where it is complex.
template <class R>
bool agrees(const Contender& contender, const Contender& reference, const Calls<R>& calls,
            double largest_error) {
  const std::vector<R> got = calls.results(contender), want = calls.results(reference);
  for (size_t i = 0; i < got.size(); i += calls.parts()) {
    double error = 0, size = 0;
    for (int part = 0; part < calls.parts(); ++part) {
      const double g = got[i + part], w = want[i + part];
      if (isnan(g) != isnan(w)) return false;
      if (isnan(w)) continue;
      error = hypot(error, g - w), size = hypot(size, w);
    }
    if (!(error <= largest_error * size)) return false;
  }
  return true;
}

template <bool dependent, class R>
void time_calls(benchmark::State& state, const Contender& c, const Calls<R>& calls, int32_t n) {
  std::vector<R> out[2];
  for (std::vector<R>& result : out) result.resize((n + 1) * 2 * stride);
  const int32_t last = pool - n;
  uint32_t zero = 0;
  benchmark::DoNotOptimize(zero);
  int32_t i = 0;
  for ([[maybe_unused]] auto _ : state) {
    calls.call(c, i, n, out);
    i += n;
    if (i > last) i = 0;
    if constexpr (dependent) {
      uint32_t word;
      memcpy(&word, out[0].data(), sizeof word);
      i += static_cast<int32_t>(word & zero);
    }
  }
}

int faults = 0;

void refuse(const std::string& name, const std::string& why) {
  fprintf(stderr, "%s is not timed: %s\n", name.c_str(), why.c_str());
  ++faults;
}

template <class R>
void add_contender(const Contender& c, const std::string& name, const Function& function,
                   const Calls<R>& calls, double largest_error) {
  const std::string prefix = c.who + "/" + name + "/";
  if (!agrees(c, function.peers.front(), calls, largest_error)) {
    refuse(c.who + "/" + name, "its results differ from those of " + function.peers.front().who);
    return;
  }
  for (const int32_t n : {0, 1, 7, 64, 1000}) {
    if (n == 0 && c.who != "ours") continue;
    benchmark::RegisterBenchmark((prefix + std::to_string(n)).c_str(), time_calls<false, R>, c,
                                 calls, n);
  }
  benchmark::RegisterBenchmark((prefix + "1/dependent").c_str(), time_calls<true, R>, c, calls, 1);
}

/// A kernel, and before a function's first kernel its peers.
template <class R>
void add_kernel(const Kernel& kernel, bool first) {
  const std::string name = kernel.type + kernel.function;
  const std::string level = kernel.kernel.substr(2, 2);
  const Function* function = find_function(kernel.type, kernel.function);
  if (function == nullptr) {
    refuse("ours/" + name + "_" + level, "bench/peers.cpp has no row for it");
    return;
  }
  const Calls<R> calls(kernel.signature(), function->low, function->high);
  if (first) {
    for (const Contender& peer : function->peers) {
      add_contender(peer, name, *function, calls, bound<R>("HA"));
    }
  }
  add_contender({"ours", kernel.call}, name + "_" + level, *function, calls, bound<R>(level));
}

void add_all() {
  std::string before;
  for (const Kernel& kernel : orv_test::distinct_kernels()) {
    const bool first = kernel.type + kernel.function != before;
    before = kernel.type + kernel.function;
    if (kernel.in_float()) {
      add_kernel<float>(kernel, first);
    } else {
      add_kernel<double>(kernel, first);
    }
  }
  benchmark::RegisterBenchmark("ours/GetMode", [](benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) benchmark::DoNotOptimize(orv_qem_kernel_GetMode());
  });
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
