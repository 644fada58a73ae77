// SPDX-License-Identifier: MIT
// Times every basic generator in every flavour, and its peers: seconds an element, bytes a second.
//
//   WHO/GENERATOR_FLAVOUR/N    independent calls of N elements
//
// WHO is "ours" or a peer. Sequences are checked first, and a contender that fails is not timed.
#include <benchmark/benchmark.h>
#include <orv/zok.h>
#include <stdio.h>
#include <string.h>

#include <memory>

#include "random_peers.hpp"

namespace orv_bench {
namespace {

constexpr int32_t sizes[] = {1000, 1000000};
constexpr int32_t largest_element = 16;

/// Where all numbers go. Its pages are made by the first call, which is no part of a timing.
void* output() {
  constexpr size_t bytes = size_t{1000000} * largest_element;
  struct alignas(64) Line {
    char c[64];
  };
  static std::vector<Line> lines(bytes / sizeof(Line));
  return lines.data();
}

int faults = 0;

void add(const Filler& filler, bool verified) {
  if (!verified) {
    fprintf(stderr, "%s is not timed: its sequence is wrong\n", filler.name.c_str());
    ++faults;
    return;
  }
  for (const int32_t n : sizes) {
    benchmark::RegisterBenchmark(
        (filler.name + "/" + std::to_string(n)).c_str(), [filler, n](benchmark::State& state) {
          for ([[maybe_unused]] auto _ : state) {
            filler.fill(n, output());
            benchmark::ClobberMemory();
          }
          using benchmark::Counter;
          const double elements = static_cast<double>(n) * static_cast<double>(state.iterations());
          state.counters["element"] = Counter(elements, Counter::kIsRate | Counter::kInvert);
          state.counters["bytes"] = Counter(elements * filler.element_bytes, Counter::kIsRate);
        });
  }
}

using StreamPointer = std::shared_ptr<StreamState>;

using Seeds = std::vector<uint32_t>;

/// Null if the generator can't be had.
StreamPointer make_stream(int32_t brng, const Seeds& seeds) {
  StreamState* stream = nullptr;
  const auto count = static_cast<int32_t>(seeds.size());
  const int32_t status = __zokNewStreamEx(&stream, brng, count, seeds.data());
  StreamPointer owner(stream, [](StreamState* s) {
    if (s != nullptr) __zokDeleteStream(&s);
  });
  return status == RNG_OK ? owner : nullptr;
}

/// One request against requests of one element.
bool agrees_with_single_draws(const Filler& whole, const Filler& single) {
  constexpr int32_t n = 3000;
  const auto bytes = static_cast<size_t>(whole.element_bytes);
  std::vector<uint64_t> a(n * bytes / 8, ~uint64_t{0}), b(n * bytes / 8);
  whole.fill(n, a.data());
  auto* r = reinterpret_cast<char*>(b.data());
  for (size_t i = 0; i < n; ++i) single.fill(1, r + i * bytes);
  return memcmp(a.data(), b.data(), n * bytes) == 0;
}

void add_flavour(int32_t brng, const Seeds& seeds, const std::string& name, int32_t element_bytes,
                 const std::function<void(StreamState*, int32_t, void*)>& draw) {
  const auto filler = [&]() -> Filler {
    const StreamPointer stream = make_stream(brng, seeds);
    if (stream == nullptr) return {name, element_bytes, nullptr};
    return {name, element_bytes, [stream, draw](int32_t n, void* r) { draw(stream.get(), n, r); }};
  };
  const Filler timed = filler(), whole = filler(), single = filler();
  add(timed, timed.fill != nullptr && agrees_with_single_draws(whole, single));
}

void add_generator(const std::string& name, int32_t brng,
                   const Seeds& seeds = {4711, 815, 7, 4, 1, 3}) {
  BrngProperties row;
  if (__zokGetBrngProperties(brng, &row) != RNG_OK) return add({name, 0, nullptr}, false);
  add_flavour(brng, seeds, name + "_words", row.WordSize,
              [row](StreamState* stream, int32_t n, void* r) {
                row.iBRng(stream, n, static_cast<uint32_t*>(r));
              });
  add_flavour(brng, seeds, name + "_doubles", 8, [row](StreamState* stream, int32_t n, void* r) {
    row.dBRng(stream, n, static_cast<double*>(r), 0, 1);
  });
  add_flavour(brng, seeds, name + "_floats", 4, [row](StreamState* stream, int32_t n, void* r) {
    row.sBRng(stream, n, static_cast<float*>(r), 0, 1);
  });
}

void add_all() {
  for (const RandomPeer& peer : random_peers()) add(peer.filler, peer.verified);
  for (const std::string& name : missing_random_peers()) {
    fprintf(stderr, "left out, not installed for this word size: %s\n", name.c_str());
  }
  add_generator("ours/MCG31M1", BRNG_MCG31M1);
  add_generator("ours/R250", BRNG_R250);
  add_generator("ours/MRG32K3A", BRNG_MRG32K3A);
  add_generator("ours/MCG59", BRNG_MCG59);
  add_generator("ours/WH", BRNG_WH);
  add_generator("ours/MT19937", BRNG_MT19937);
  add_generator("ours/MT2203", BRNG_MT2203);
  add_generator("ours/SFMT19937", BRNG_SFMT19937);
  for (const uint32_t dims : {10, 40}) {
    add_generator("ours/Sobol" + std::to_string(dims), BRNG_SOBOL, {dims});
    add_generator("ours/Niederr" + std::to_string(dims), BRNG_NIEDERR, {dims});
  }
}

}  // namespace
}  // namespace orv_bench

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  orv_bench::output();
  orv_bench::add_all();
  benchmark::RunSpecifiedBenchmarks();
  return orv_bench::faults == 0 ? 0 : 1;
}
