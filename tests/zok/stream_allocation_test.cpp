// What streams allocate, and what is left when an allocation fails.
#include <map>
#include <string>
#include <vector>

#include "failing_allocator.hpp"
#include "stream_support.hpp"

using namespace orv_test;

namespace {

StreamState* const untouched = reinterpret_cast<StreamState*>(8);

TEST(Streams, CreationChecksTheIdentifierFirst) {
  const uint32_t seed = 1;
  for (const int32_t brng : {0xA00000, 0xB00000, 0xC00000, 0xA00001, 0x500111, 0x900400, 279}) {
    StreamState* stream = untouched;
    watch_allocations();
    const int32_t status = __zokNewStreamEx(&stream, brng, 1, &seed);
    const Allocations seen = seen_allocations();
    EXPECT_EQ(status, RNG_INVALID_BRNG) << brng;
    EXPECT_EQ(seen.asked, 0) << brng;
    EXPECT_EQ(stream, untouched) << brng;
  }
}

TEST(Streams, ABlockIsOneAlignedAllocationWithItsHeader) {
  for (const Generator& g : generators) {
    SCOPED_TRACE(g.name);
    watch_allocations();
    StreamState* stream = nullptr;
    const uint32_t seeds[] = {1, 2, 3};
    __zokNewStreamEx(&stream, g.brng, 3, seeds);
    const Allocations made = seen_allocations();
    EXPECT_EQ(made.asked, 1);
    EXPECT_EQ(made.bytes, static_cast<size_t>(properties_of(g.brng).StateSize));
    EXPECT_EQ(reinterpret_cast<uintptr_t>(stream) % 32, 0u);
    EXPECT_EQ(__zokGetStreamStateBrng(stream), g.brng);
    EXPECT_EQ(stream->HeaderMark, 1);
    EXPECT_EQ(stream->Chunks, 0);
    EXPECT_EQ(__zokDeleteStream(&stream), RNG_OK);
    EXPECT_EQ(stream, nullptr);

    stream = untouched;
    watch_allocations(1);
    const int32_t status = __zokNewStreamEx(&stream, g.brng, 3, seeds);
    seen_allocations();
    EXPECT_EQ(status, RNG_NO_MEMORY);
    EXPECT_EQ(stream, nullptr);
  }
}

TEST(Streams, ACopyWithoutMemoryStaysWithoutChunks) {
  Stream source(BRNG_MT2203);
  for (int id = 1; id <= 2; ++id) add_chunk(source, id, 30);
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
  }
}

TEST(Streams, AStateCopyWithoutMemoryLeavesNoChunks) {
  Stream source(BRNG_MCG59), destination(BRNG_MCG59, 9);
  for (int id = 1; id <= 2; ++id) add_chunk(source, id, 40);
  for (int failing = 1; failing <= 4; ++failing) {
    add_chunk(destination, 7, 20);
    watch_allocations(failing);
    EXPECT_EQ(__zokCopyStreamState(destination, source), RNG_NO_MEMORY);
    EXPECT_EQ(seen_allocations().open, 0);
    EXPECT_EQ(__zokGetNumChunks(destination), 0);
    EXPECT_EQ(__zokGetNumChunks(source), 2);
  }
  EXPECT_TRUE(future_of(source) == future_of(destination));
}

TEST(Streams, WithoutMemoryTheChunksAreAsTheyWere) {
  Stream stream(BRNG_MCG31M1);
  ASSERT_EQ(add_chunk(stream, 3, 10), RNG_OK);
  char data = 'x';
  watch_allocations(1);
  EXPECT_EQ(__zokAddChunk(stream, 4, &data, 1), RNG_NO_MEMORY);
  EXPECT_EQ(seen_allocations().asked, 1);
  EXPECT_EQ(data, 'x');
  EXPECT_EQ(__zokGetNumChunks(stream), 1);
  expect_chunk(stream, 3, 10);
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
}

TEST(Streams, AbstractStreamsNeedOneBlock) {
  const auto check = [](auto create, auto element, auto... range) {
    decltype(element) buffer[4];
    for (const int failing : {0, 1}) {
      StreamState* stream = untouched;
      watch_allocations(failing);
      EXPECT_EQ(create(&stream, 4, buffer, range..., [](auto...) { return 0; }),
                failing == 0 ? RNG_OK : RNG_NO_MEMORY);
      if (stream != nullptr) __zokDeleteStream(&stream);
      const Allocations seen = seen_allocations();
      EXPECT_EQ(seen.asked, 1);
      EXPECT_EQ(seen.open, 0);
    }
  };
  check(__zokiNewAbstractStream, uint32_t{});
  check(__zokdNewAbstractStream, double{}, 0.0, 1.0);
  check(__zoksNewAbstractStream, float{}, 0.0f, 1.0f);
}

/// A stream with two chunks, in memory and in a file.
class Files : public testing::Test {
 protected:
  Files() : source(BRNG_MCG59) {
    for (int id = 1; id <= 2; ++id) add_chunk(source, id, 40);
    EXPECT_EQ(save(source, name), RNG_OK);
  }

  Stream source;
  const MemoryFile file;
  const std::string name = file.name();
  const int32_t length = static_cast<int32_t>(name.size());
};

TEST_F(Files, SavingWithoutMemory) {
  // No memory for a copy of the name, or for the C library's file; with less for its buffer it goes
  // on.
  const int32_t status[] = {RNG_NO_MEMORY, RNG_FILE_OPEN, RNG_OK, RNG_OK, RNG_OK};
  for (int failing = 1; failing <= 5; ++failing) {
    watch_allocations(failing);
    EXPECT_EQ(__zokSaveStreamF(source, name.data(), length), status[failing - 1]) << failing;
    EXPECT_EQ(seen_allocations().open, 0) << failing;
    Stream loaded;
    EXPECT_EQ(load(&loaded, name), RNG_OK) << failing;
  }
}

TEST_F(Files, LoadingWithoutMemory) {
  for (const bool occupied : {false, true}) {
    std::map<int32_t, int> times;  // that each status came
    const int tries = 12;
    for (int failing = 1; failing <= tries; ++failing) {
      SCOPED_TRACE(failing);
      StreamState* stream = nullptr;
      watch_allocations();
      if (occupied) __zokCopyStream(&stream, source);
      seen_allocations();
      StreamState* old = stream;
      watch_allocations(failing);
      const int32_t status = __zokLoadStreamF(&stream, name.data(), length);
      EXPECT_EQ(seen_allocations().open, status == RNG_OK ? 5 : 0);
      EXPECT_EQ(stream != nullptr, status == RNG_OK);
      ++times[status];
      if (status != RNG_OK) continue;
      Stream copy;
      __zokCopyStream(&copy, source);
      EXPECT_TRUE(future_of(stream) == future_of(copy));
      __zokDeleteStream(&stream);
      if (occupied) __zokDeleteStream(&old);
    }
    // No memory for the name, the block, two chunks of two blocks.
    EXPECT_EQ(times, (std::map<int32_t, int>{
                         {RNG_NO_MEMORY, 6}, {RNG_FILE_OPEN, 1}, {RNG_OK, tries - 7}}));
  }
}

}  // namespace
