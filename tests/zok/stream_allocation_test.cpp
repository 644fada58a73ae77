// What streams allocate, and what is left when an allocation fails.
#include <map>
#include <string>
#include <vector>

#include "failing_allocator.hpp"
#include "stream_support.hpp"

using namespace orv_test;

namespace {

StreamState* const untouched = reinterpret_cast<StreamState*>(8);

TEST(Streams, ABlockIsOneAlignedAllocationWithItsHeader) {
  const uint32_t seeds[] = {1, 2, 3};
  const auto create = [&](int32_t brng, int32_t status, int failing, size_t bytes) {
    StreamState* stream = untouched;
    watch_allocations(failing);
    const int32_t got = __zokNewStreamEx(&stream, brng, 3, seeds);
    const Allocations made = seen_allocations();
    EXPECT_EQ(got, status);
    EXPECT_EQ(made.asked, bytes > 0 ? 1 : 0);
    EXPECT_EQ(made.bytes, bytes);
    return stream;
  };
  for (const int32_t brng : {0xA00000, 0xB00000, 0xC00000, 0xA00001, 0x500111, 0x900400, 279}) {
    EXPECT_EQ(create(brng, RNG_INVALID_BRNG, 0, 0), untouched) << brng;
  }
  for (const Generator& g : generators) {
    SCOPED_TRACE(g.name);
    const auto bytes = static_cast<size_t>(properties_of(g.brng).StateSize);
    EXPECT_EQ(create(g.brng, RNG_NO_MEMORY, 1, bytes), nullptr);
    StreamState* stream = create(g.brng, RNG_OK, 0, bytes);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(stream) % 32, 0u);
    EXPECT_EQ(__zokGetStreamStateBrng(stream), g.brng);
    EXPECT_EQ(stream->HeaderMark, 1);
    EXPECT_EQ(stream->Chunks, 0);
    EXPECT_EQ(__zokDeleteStream(&stream), RNG_OK);
    EXPECT_EQ(stream, nullptr);
  }
}

TEST(Streams, ACopyWithoutMemoryHasNoChunks) {
  Stream source(BRNG_MCG59), destination(BRNG_MCG59, 9);
  for (int id = 1; id <= 2; ++id) add_chunk(source, id, 40);
  for (int failing = 1; failing <= 6; ++failing) {  // a block, and two blocks for each chunk
    SCOPED_TRACE(failing);
    StreamState* copy = untouched;
    watch_allocations(failing);
    EXPECT_EQ(__zokCopyStream(&copy, source), failing < 6 ? RNG_NO_MEMORY : RNG_OK);
    EXPECT_EQ(copy == nullptr, failing == 1);
    if (copy != nullptr) {
      EXPECT_EQ(__zokGetNumChunks(copy), failing < 6 ? 0 : 2);
      __zokDeleteStream(&copy);
    }
    EXPECT_EQ(seen_allocations().open, 0);

    if (failing > 4) continue;  // here the block is there
    add_chunk(destination, 7, 20);
    watch_allocations(failing);
    EXPECT_EQ(__zokCopyStreamState(destination, source), RNG_NO_MEMORY);
    EXPECT_EQ(seen_allocations().open, 0);
    EXPECT_EQ(__zokGetNumChunks(destination), 0);
  }
  EXPECT_EQ(__zokGetNumChunks(source), 2);
  EXPECT_TRUE(future_of(source) == future_of(destination));
}

TEST(Streams, ChunksAreReleasedWithTheirData) {
  Stream stream(BRNG_MCG31M1);
  watch_allocations();
  for (int i = 0; i < 5; ++i) add_chunk(stream, i, 100);
  __zokDeleteChunks(stream);
  const Allocations seen = seen_allocations();
  EXPECT_EQ(seen.asked, 10);
  EXPECT_EQ(seen.open, 0);
  EXPECT_EQ(seen.bytes, 5 * (100 + 8 + 2 * sizeof(void*)));

  char data = 'x';
  watch_allocations(1);
  EXPECT_EQ(__zokAddChunk(stream, 4, &data, 1), RNG_NO_MEMORY);
  EXPECT_EQ(seen_allocations().asked, 1);
  EXPECT_EQ(data, 'x');
  EXPECT_EQ(__zokGetNumChunks(stream), 0);
}

TEST(Streams, AbstractStreamsNeedOneBlock) {
  float buffer[4];
  for (const int failing : {0, 1}) {
    StreamState* stream = untouched;
    watch_allocations(failing);
    EXPECT_EQ(__zoksNewAbstractStream(&stream, 4, buffer, 0, 1, [](auto...) { return 0; }),
              failing == 0 ? RNG_OK : RNG_NO_MEMORY);
    if (stream != nullptr) __zokDeleteStream(&stream);
    const Allocations seen = seen_allocations();
    EXPECT_EQ(seen.asked, 1);
    EXPECT_EQ(seen.open, 0);
  }
}

TEST(Streams, SavingAndLoadingWithoutMemory) {
  const Stream source(BRNG_MCG59);
  for (int id = 1; id <= 2; ++id) add_chunk(source, id, 40);
  const MemoryFile file;
  const std::string name = file.name();
  const auto length = static_cast<int32_t>(name.size());
  const int tries = 12;
  std::map<int32_t, int> times;  // that each status came
  for (int failing = 1; failing <= tries; ++failing) {
    watch_allocations(failing);
    const int32_t status = __zokSaveStreamF(source, name.data(), length);
    EXPECT_EQ(seen_allocations().open, 0) << failing;
    ++times[status];
  }
  // No memory for a copy of the name, or for the C library's file; with less for its buffer it goes
  // on.
  using Times = std::map<int32_t, int>;
  EXPECT_EQ(times, (Times{{RNG_NO_MEMORY, 1}, {RNG_FILE_OPEN, 1}, {RNG_OK, tries - 2}}));

  for (const bool occupied : {false, true}) {
    times.clear();
    for (int failing = 1; failing <= tries; ++failing) {
      Stream copy;
      StreamState* stream = nullptr;
      __zokCopyStream(&copy, source);
      if (occupied) __zokCopyStream(&stream, source);
      StreamState* old = stream;
      watch_allocations(failing);
      const int32_t status = __zokLoadStreamF(&stream, name.data(), length);
      EXPECT_EQ(seen_allocations().open, status == RNG_OK ? 5 : 0) << failing;
      EXPECT_EQ(stream != nullptr, status == RNG_OK) << failing;
      ++times[status];
      if (status != RNG_OK) continue;
      EXPECT_TRUE(future_of(stream) == future_of(copy)) << failing;
      __zokDeleteStream(&stream);
      if (occupied) __zokDeleteStream(&old);
    }
    // No memory for the name, the block, two chunks of two blocks.
    EXPECT_EQ(times, (Times{{RNG_NO_MEMORY, 6}, {RNG_FILE_OPEN, 1}, {RNG_OK, tries - 7}}));
  }
}

}  // namespace
