// SPDX-License-Identifier: MIT
// Times every kernel that is ready, and its peers, on the same arguments.
//
//   WHO/FUNCTION_LEVEL/N            independent calls of N elements
//   WHO/FUNCTION_LEVEL/1/dependent  each call waits for the result before it
//   WHO/FUNCTION_LEVEL/1000/LO..HI  arguments from a further range
//
// WHO is "ours", or a peer, which has no level. With N = 0 one of our kernels does all that a call
// costs besides elements. Results are checked first, and a contender with a wrong one is not timed.
#include <benchmark/benchmark.h>
#include <math.h>
#include <stdio.h>
#include <string.h>

#include <memory>
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

/// Arguments for contenders of one kernel's signature, and room for results.
template <class R>
class Calls {
 public:
  Calls(const Kernel& kernel, double low, double high) : signature_(kernel.signature()) {
    std::mt19937_64 bits(20240229);
    const bool masked = kernel.function.ends_with('M');
    for (int32_t i = 0; i < pool; ++i) {
      const auto bit = static_cast<int32_t>(bits() >> 63);
      words_.push_back(masked ? bit : i * static_cast<int32_t>(stride) + bit);
    }
    for (std::vector<R>& input : in_) {
      input.resize(pool * 2 * stride);
      for (R& x : input) {
        const double part = static_cast<double>(bits() >> 11) * 0x1p-53;
        x = static_cast<R>(low + (high - low) * part);
      }
    }
  }

  /// A call on `n` elements from `i` on, with results at the start of `out`.
  void call(const Contender& c, int32_t i, int32_t n, std::vector<R> (&out)[2]) const {
    const size_t from = static_cast<size_t>(i) * signature_.input_parts;
    c.call({.n = n,
            .inputs = {&in_[0][from], &in_[1][from]},
            .results = {out[0].data(), out[1].data()},
            .scalars = orv_test::usual_scalars,
            .increment = stride,
            .indices = words_.data()});
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
  std::vector<int32_t> words_;  // places about a stride apart, or masks
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
void time_calls(benchmark::State& state, const Contender& c,
                const std::shared_ptr<const Calls<R>>& calls, int32_t n) {
  std::vector<R> out[2];
  for (std::vector<R>& result : out) result.resize((n + 1) * 2 * stride);
  const int32_t last = pool - n;
  uint32_t zero = 0;
  benchmark::DoNotOptimize(zero);
  int32_t i = 0;
  for ([[maybe_unused]] auto _ : state) {
    calls->call(c, i, n, out);
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

/// False if the contender has no place in the contest.
template <class R>
bool fits(const Contender& c, const std::string& name, const Function& function,
          const Calls<R>& calls, double largest_error) {
  if (agrees(c, function.peers.front(), calls, largest_error)) return true;
  refuse(c.who + "/" + name, "its results differ from those of " + function.peers.front().who);
  return false;
}

template <class R>
void add_contender(const Contender& c, const std::string& name, const Function& function,
                   const Kernel& kernel, double largest_error) {
  using Shared = std::shared_ptr<const Calls<R>>;
  const std::string prefix = c.who + "/" + name + "/";
  const auto add = [&](const std::string& suffix, auto* time, const Shared& calls, int32_t n) {
    benchmark::RegisterBenchmark((prefix + suffix).c_str(), time, c, calls, n);
  };
  const auto calls = std::make_shared<const Calls<R>>(kernel, function.low, function.high);
  if (!fits(c, name, function, *calls, largest_error)) return;
  for (const int32_t n : {0, 1, 7, 64, 1000}) {
    if (n == 0 && c.who != "ours") continue;
    add(std::to_string(n), time_calls<false, R>, calls, n);
  }
  add("1/dependent", time_calls<true, R>, calls, 1);
  for (const Range& range : function.further) {
    char text[64];
    snprintf(text, sizeof text, "1000/%g..%g", range.low, range.high);
    const auto further = std::make_shared<const Calls<R>>(kernel, range.low, range.high);
    if (!fits(c, name + "/" + text, function, *further, largest_error)) continue;
    add(text, time_calls<false, R>, further, 1000);
  }
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
  const auto add = [&](const Contender& c, const std::string& as, const std::string& bound_of) {
    add_contender<R>(c, as, *function, kernel, bound<R>(bound_of));
  };
  if (first) {
    for (const Contender& peer : function->peers) add(peer, name, "HA");
  }
  add({"ours", kernel.call}, name + "_" + level, level);
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
