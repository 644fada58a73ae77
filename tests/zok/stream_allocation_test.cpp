// SPDX-License-Identifier: MIT
// What streams allocate, and what is left when an allocation fails.
#include <orv/qem.h>

#include <map>

#include "distributions.hpp"
#include "failing_allocator.hpp"

using namespace orv_test;

namespace {

TEST(Streams, ABlockIsOneAlignedAllocationWithItsHeader) {
  StreamState* const untouched = reinterpret_cast<StreamState*>(8);
  const uint32_t seeds[] = {1, 2, 3};
  const auto create = [&](int32_t brng, int32_t status, int failing, size_t bytes) {
    StreamState* stream = untouched;
    watch_allocations(failing);
    const int32_t got = __zokNewStreamEx(&stream, brng, 3, seeds);
    const Allocations made = seen_allocations();
    EXPECT_EQ(std::tuple(got, made.asked, made.bytes), std::tuple(status, bytes > 0, bytes))
        << brng;
    return stream;
  };
  for (const int32_t brng : {0xA00000, 0xB00000, 0xC00000, 0xA00001, 0x500111, 0x900400, 279}) {
    EXPECT_EQ(create(brng, RNG_INVALID_BRNG, 0, 0), untouched) << brng;
  }
  for (const int32_t brng : generators) {
    const auto bytes = static_cast<size_t>(properties_of(brng).StateSize);
    EXPECT_EQ(create(brng, RNG_NO_MEMORY, 1, bytes), nullptr);
    StreamState* stream = create(brng, RNG_OK, 0, bytes);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(stream) % 32, 0u);
    EXPECT_EQ(__zokGetStreamStateBrng(stream), brng);
    EXPECT_EQ(stream->HeaderMark, 1);
    EXPECT_EQ(stream->Chunks, 0);
    EXPECT_EQ(__zokDeleteStream(&stream), RNG_OK);
    EXPECT_EQ(stream, nullptr);
  }
}

/// How often each status comes, with a stream or none, while one after the other of the first 12
/// allocations of `call` fails. A failure leaves no chunks, the end of the stream nothing.
template <class Call>
auto outcomes(Call call) {
  std::map<std::pair<int32_t, bool>, int> times;
  for (int failing = 1; failing <= 12; ++failing) {
    StreamState* stream = nullptr;
    watch_allocations(failing);
    const int32_t status = call(&stream);
    const bool made = stream != nullptr;
    EXPECT_TRUE(status == RNG_OK || !made || stream->Chunks == 0) << failing;
    __zokDeleteStream(&stream);
    EXPECT_EQ(seen_allocations().open, 0) << failing;
    ++times[{status, made}];
  }
  return times;
}

TEST(Streams, WithoutMemoryNothingIsLeft) {
  using Outcomes = decltype(outcomes([](auto) { return 0; }));
  const Stream source(BRNG_MCG59), destination(BRNG_MCG59, {9});
  add_chunks(source, 2);
  add_chunks(destination, 1);
  const std::string name = memory_file();
  const auto length = static_cast<int32_t>(name.size());
  float buffer[4];
  EXPECT_EQ(outcomes([&](StreamState** stream) {
              return __zoksNewAbstractStream(stream, 4, buffer, 0, 1, [](auto...) { return 0; });
            }),
            (Outcomes{{{RNG_NO_MEMORY, false}, 1}, {{RNG_OK, true}, 11}}));
  // The block, two blocks for each chunk.
  EXPECT_EQ(
      outcomes([&](StreamState** stream) { return __zokCopyStream(stream, source); }),
      (Outcomes{{{RNG_NO_MEMORY, false}, 1}, {{RNG_NO_MEMORY, true}, 4}, {{RNG_OK, true}, 7}}));
  EXPECT_EQ(outcomes([&](StreamState**) {
              const int32_t status = __zokCopyStreamState(destination, source);
              EXPECT_EQ(__zokGetNumChunks(destination), status == RNG_OK ? 2 : 0);
              __zokDeleteChunks(destination);
              return status;
            }),
            (Outcomes{{{RNG_NO_MEMORY, false}, 4}, {{RNG_OK, false}, 8}}));
  // A copy of the name and the C library's file come first; with less for its buffer it goes on.
  EXPECT_EQ(
      outcomes([&](StreamState**) { return __zokSaveStreamF(source, name.data(), length); }),
      (Outcomes{{{RNG_NO_MEMORY, false}, 1}, {{RNG_FILE_OPEN, false}, 1}, {{RNG_OK, false}, 10}}));
  EXPECT_EQ(
      outcomes([&](StreamState** stream) { return __zokLoadStreamF(stream, name.data(), length); }),
      (Outcomes{{{RNG_NO_MEMORY, false}, 6}, {{RNG_FILE_OPEN, false}, 1}, {{RNG_OK, true}, 5}}));
  EXPECT_TRUE(future_of(source) == future_of(destination));
}

/// Draws that hang a chunk on the stream: its data and its record come before any number.
template <class T>
void expect_nothing_without_memory(const std::vector<Draw<T>>& draws) {
  orv_qem_kernel_GetMode();  // the thread has its words now
  orv_qem_kernel_GetErrStatus();
  orv_qem_kernel_GetErrorCallBack();
  for (const Draw<T>& draw : draws) {
    const Stream stream(BRNG_MT19937);
    std::vector<T> r(10, 77);
    for (const int failing : {1, 2}) {
      watch_allocations(failing);
      EXPECT_EQ(draw(stream, 10, r.data()), RNG_NO_MEMORY);
      EXPECT_EQ(seen_allocations().open, 0);
      EXPECT_EQ(r, std::vector<T>(10, 77));
      EXPECT_EQ(stream->Chunks, 0);
    }
    watch_allocations();
    EXPECT_EQ(draw(stream, 9, r.data()), RNG_OK);
    const Allocations made = seen_allocations();
    EXPECT_EQ(made.asked, 2);
    watch_allocations(1);
    EXPECT_EQ(draw(stream, 10, r.data()), RNG_OK) << "a chunk is made once";
    EXPECT_EQ(seen_allocations().asked, 0);
  }
}

template <class T>
std::vector<Draw<T>> draws_with_a_chunk() {
  return {bound<T>(ORV_ENTRY(T, Gaussian), RNG_GAUSSIAN_BOXMULLER2, 2, 3),
          bound<T>(ORV_ENTRY(T, Lognormal), 0, 0, 1, 2, 3),
          bound<T>(ORV_ENTRY(T, Gamma), 0, 3, 0, 1)};
}
template <>
std::vector<Draw<int32_t>> draws_with_a_chunk() {
  std::vector<Draw<int32_t>> draws;
  for (const Discrete& d : discrete_draws()) {
    if (d.chunk != 0) draws.push_back(d.draw);
  }
  return draws;
}

/// Large vectors want scratch; without it r holds the standard deviates.
template <class T>
void expect_standard_vectors_without_memory() {
  for (const int32_t dim : {1023, 1024}) {
    const std::vector<T> t(static_cast<size_t>(dim) * dim, 1), a(dim, 0);
    std::vector<T> r(2 * dim), x(2 * dim);
    const Stream stream(BRNG_MT19937), standard(BRNG_MT19937);
    ORV_ENTRY(T, Gaussian)(0, standard, 2 * dim, x.data(), 0, 1);
    watch_allocations(1);
    const int32_t status =
        ORV_ENTRY(T, GaussianMV)(0, stream, 2, r.data(), dim, RNG_STORAGE_FULL, a.data(), t.data());
    EXPECT_EQ(seen_allocations().open, 0);
    EXPECT_EQ(status, dim < 1024 ? RNG_OK : RNG_NO_MEMORY);
    EXPECT_EQ(r == x, dim == 1024);
    EXPECT_TRUE(future_of(stream) == future_of(standard));
  }
}

TEST(Distributions, WithoutMemoryDrawNothing) {
  expect_nothing_without_memory(draws_with_a_chunk<double>());
  expect_nothing_without_memory(draws_with_a_chunk<float>());
  expect_nothing_without_memory(draws_with_a_chunk<int32_t>());
  expect_standard_vectors_without_memory<double>();
  expect_standard_vectors_without_memory<float>();
}

TEST(Streams, MoreQuasiRandomDimensionsNeedAChunk) {
  using Outcomes = decltype(outcomes([](auto) { return 0; }));
  for (const int32_t brng : {BRNG_SOBOL, BRNG_NIEDERR}) {
    const uint32_t dims = brng == BRNG_SOBOL ? 41 : 319;
    std::vector<uint32_t> seeds(3 + 32 * dims, 0x80000000);
    seeds[0] = dims, seeds[1] = 1, seeds[2] = 4;
    const auto count = static_cast<int32_t>(seeds.size());
    const auto create = [&](StreamState** stream) {
      const int32_t status = __zokNewStreamEx(stream, brng, count, seeds.data());
      uint32_t word;
      if (*stream != nullptr) {
        EXPECT_EQ(_zokiRngUniformBits(0, *stream, 1, &word),
                  status == RNG_OK ? RNG_OK : RNG_NULL_ENTRY);
      }
      return status;
    };
    // The block, then data and record of the chunk.
    EXPECT_EQ(
        outcomes(create),
        (Outcomes{{{RNG_NO_MEMORY, false}, 1}, {{RNG_NO_MEMORY, true}, 2}, {{RNG_OK, true}, 9}}));
    // What a chunk cannot be: its size has 31 bits. Rows of no numbers need one seed a dimension.
    if (brng == BRNG_NIEDERR) continue;
    const uint32_t most = 8'300'000;
    seeds.assign(most + 4, 7);
    seeds[0] = most, seeds[1] = 1, seeds[2] = 3, seeds[most + 2] = 0;
    StreamState* stream = nullptr;
    EXPECT_EQ(__zokNewStreamEx(&stream, brng, most + 4, seeds.data()), RNG_NO_MEMORY);
    __zokDeleteStream(&stream);
  }
}

}  // namespace
