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
using orv_test::Shape;

/// Few enough to stay in the first-level cache with the results, too many to be learnt by heart.
constexpr int32_t pool = 2000;

template <class T>
struct RealOf {
  using type = T;
};
template <>
struct RealOf<QemComplexFloat> {
  using type = float;
};
template <>
struct RealOf<QemComplexDouble> {
  using type = double;
};
template <class T>
using Real = typename RealOf<T>::type;

template <class T>
struct Arguments {
  std::vector<T> a, b;

  Arguments(double low, double high) : a(pool), b(pool) {
    std::mt19937_64 bits(20240229);
    for (std::vector<T>* v : {&a, &b}) {
      auto* x = reinterpret_cast<Real<T>*>(v->data());
      for (size_t i = 0; i < pool * sizeof(T) / sizeof *x; ++i) {
        const double u = static_cast<double>(bits() >> 11) * 0x1p-53;
        x[i] = static_cast<Real<T>>(low + (high - low) * u);
      }
    }
  }
};

/// Loose enough for every honest implementation of the level.
template <class T>
double bound(const std::string& level) {
  if (sizeof(Real<T>) == sizeof(float)) return level == "EP" ? 1e-3 : 1e-5;
  return level == "EP" ? 1e-7 : 1e-13;
}

template <class T>
bool agrees(const Contender<T>& contender, const Contender<T>& reference, const Arguments<T>& x,
            double largest_error) {
  std::vector<T> got(pool), want(pool);
  memset(got.data(), 0xFF, pool * sizeof(T));
  contender(pool, x.a.data(), x.b.data(), got.data());
  reference(pool, x.a.data(), x.b.data(), want.data());
  const auto* g = reinterpret_cast<const Real<T>*>(got.data());
  const auto* w = reinterpret_cast<const Real<T>*>(want.data());
  for (size_t i = 0; i < pool * sizeof(T) / sizeof *g; ++i) {
    const double error = fabs(static_cast<double>(g[i]) - static_cast<double>(w[i]));
    if (!(error <= largest_error * fabs(static_cast<double>(w[i])))) return false;
  }
  return true;
}

template <bool dependent, class T>
void time_calls(benchmark::State& state, const Contender<T>& call, const Arguments<T>& x,
                int32_t n) {
  std::vector<T> r(n + 1);
  const int32_t last = pool - n;
  uint32_t zero = 0;
  benchmark::DoNotOptimize(zero);
  int32_t i = 0;
  for ([[maybe_unused]] auto _ : state) {
    call(n, &x.a[i], &x.b[i], r.data());
    i += n;
    if (i > last) i = 0;
    if constexpr (dependent) {
      uint32_t word;
      memcpy(&word, r.data(), sizeof word);
      i += static_cast<int32_t>(word & zero);
    }
  }
}

int faults = 0;

void refuse(const std::string& name, const std::string& why) {
  fprintf(stderr, "%s is not timed: %s\n", name.c_str(), why.c_str());
  ++faults;
}

template <class T>
void add_contender(const Contender<T>& c, const std::string& name, const Function<T>& function,
                   const Arguments<T>& x, double largest_error) {
  const std::string prefix = c.who + "/" + name + "/";
  if (!agrees(c, function.peers.front(), x, largest_error)) {
    refuse(c.who + "/" + name, "its results differ from those of " + function.peers.front().who);
    return;
  }
  for (const int32_t n : {0, 1, 7, 64, 1000}) {
    if (n == 0 && c.who != "ours") continue;
    benchmark::RegisterBenchmark((prefix + std::to_string(n)).c_str(), time_calls<false, T>, c, x,
                                 n);
  }
  benchmark::RegisterBenchmark((prefix + "1/dependent").c_str(), time_calls<true, T>, c, x, 1);
}

/// A kernel, and before a function's first kernel its peers.
template <class T>
void add_kernel(const Kernel& kernel, bool first) {
  const std::string name = kernel.type + kernel.function;
  const std::string level = kernel.kernel.substr(2, 2);
  const Function<T>* function = find_function<T>(kernel.function);
  if (function == nullptr) {
    refuse("ours/" + name + "_" + level, "bench/peers.cpp has no row for it");
    return;
  }
  const Arguments<T> x(function->low, function->high);
  if (first) {
    for (const auto& peer : function->peers)
      add_contender(peer, name, *function, x, bound<T>("HA"));
  }
  Contender<T> ours{"ours"};
  if (kernel.shape == Shape::Unary) {
    ours.unary = kernel.unary<T>();
  } else {
    ours.binary = kernel.binary<T>();
  }
  add_contender(ours, name + "_" + level, *function, x, bound<T>(level));
}

void add_all() {
  std::string before;
  for (const Kernel& kernel : orv_test::distinct_kernels()) {
    const bool first = kernel.type + kernel.function != before;
    before = kernel.type + kernel.function;
    switch (kernel.type) {
      case 's':
        add_kernel<float>(kernel, first);
        break;
      case 'd':
        add_kernel<double>(kernel, first);
        break;
      case 'c':
        add_kernel<QemComplexFloat>(kernel, first);
        break;
      case 'z':
        add_kernel<QemComplexDouble>(kernel, first);
        break;
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
