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
  for (int failing = 1; failing <= 6; ++failing) {
    SCOPED_TRACE(failing);
    StreamState* copy = untouched;
    watch_allocations(failing);
    const int32_t status = __zokCopyStream(&copy, source);
    if (failing == 6) {  // a block, and two blocks for each chunk
      EXPECT_EQ(status, RNG_OK);
    } else {
      EXPECT_EQ(status, RNG_NO_MEMORY);
    }
    if (copy != nullptr) {
      EXPECT_EQ(__zokGetNumChunks(copy), failing == 6 ? 2 : 0);
      __zokDeleteStream(&copy);
    } else {
      EXPECT_EQ(failing, 1);
    }
    EXPECT_EQ(seen_allocations().open, 0);
  }
  Stream copy;
  ASSERT_EQ(__zokCopyStream(&copy, source), RNG_OK);
  expect_same_future(source, copy);
}

TEST(Streams, AStateCopyWithoutMemoryLeavesNoChunks) {
  Stream source(BRNG_MCG59), destination(BRNG_MCG59, 9);
  for (int id = 1; id <= 2; ++id) add_chunk(source, id, 40);
  for (int failing = 1; failing <= 4; ++failing) {
    add_chunk(destination, 7, 20);
    watch_allocations(failing);
    const int32_t status = __zokCopyStreamState(destination, source);
    const Allocations seen = seen_allocations();
    EXPECT_EQ(status, RNG_NO_MEMORY);
    EXPECT_EQ(seen.open, 0);
    EXPECT_EQ(__zokGetNumChunks(destination), 0);
    EXPECT_EQ(__zokGetNumChunks(source), 2);
  }
  expect_same_future(source, destination);
}

TEST(Streams, WithoutMemoryTheChunksAreAsTheyWere) {
  Stream stream(BRNG_MCG31M1);
  ASSERT_EQ(add_chunk(stream, 3, 10), RNG_OK);
  char data = 'x';
  watch_allocations(1);
  const int32_t status = __zokAddChunk(stream, 4, &data, 1);
  const Allocations seen = seen_allocations();
  EXPECT_EQ(status, RNG_NO_MEMORY);
  EXPECT_EQ(seen.asked, 1);
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
  uint32_t words[4];
  double doubles[4];
  float floats[4];
  const auto create = [&](int type, StreamState** stream) {
    if (type == 0) return __zokiNewAbstractStream(stream, 4, words, [](auto...) { return 0; });
    if (type == 1) {
      return __zokdNewAbstractStream(stream, 4, doubles, 0, 1, [](auto...) { return 0; });
    }
    return __zoksNewAbstractStream(stream, 4, floats, 0, 1, [](auto...) { return 0; });
  };
  for (int type = 0; type < 3; ++type) {
    for (const int failing : {0, 1}) {
      StreamState* stream = untouched;
      watch_allocations(failing);
      const int32_t status = create(type, &stream);
      if (stream != nullptr) __zokDeleteStream(&stream);
      const Allocations seen = seen_allocations();
      EXPECT_EQ(status, failing == 0 ? RNG_OK : RNG_NO_MEMORY);
      EXPECT_EQ(seen.asked, 1);
      EXPECT_EQ(seen.open, 0);
    }
  }
}

/// A stream with two chunks, in memory and in a file.
class Files : public testing::Test {
 protected:
  Files() : source(BRNG_MCG59) {
    for (int id = 1; id <= 2; ++id) add_chunk(source, id, 40);
    EXPECT_EQ(__zokSaveStreamF(source, name.data(), -1), RNG_OK);
  }

  Stream source;
  const MemoryFile file;
  const std::string name = file.name();
};

/// How often each status came when the allocations of a call failed one after the other.
using Statuses = std::map<int32_t, int>;

TEST_F(Files, SavingWithoutMemory) {
  Statuses seen;
  const int tries = 5;
  for (int failing = 1; failing <= tries; ++failing) {
    watch_allocations(failing);
    const int32_t status = __zokSaveStreamF(source, name.data(), static_cast<int>(name.size()));
    EXPECT_EQ(seen_allocations().open, 0) << failing;
    if (failing == 1) {
      EXPECT_EQ(status, RNG_NO_MEMORY) << "the name comes first";
    }
    ++seen[status];
    Stream loaded;
    if (status == RNG_OK) {
      EXPECT_EQ(__zokLoadStreamF(&loaded, name.data(), -1), RNG_OK);
    }
  }
  EXPECT_EQ(seen, (Statuses{{RNG_NO_MEMORY, 1}, {RNG_FILE_OPEN, 1}, {RNG_OK, tries - 2}}));
}

TEST_F(Files, LoadingWithoutMemory) {
  for (const bool occupied : {false, true}) {
    Statuses seen;
    const int tries = 12;
    for (int failing = 1; failing <= tries; ++failing) {
      SCOPED_TRACE(failing);
      StreamState* stream = nullptr;
      watch_allocations();
      if (occupied) __zokCopyStream(&stream, source);
      seen_allocations();
      StreamState* const old = stream;
      watch_allocations(failing);
      const int32_t status = __zokLoadStreamF(&stream, name.data(), static_cast<int>(name.size()));
      const int after = seen_allocations().open;
      ++seen[status];
      if (status == RNG_OK) {
        ASSERT_NE(stream, nullptr);
        EXPECT_EQ(after, 5);
        Stream copy;
        __zokCopyStream(&copy, source);
        expect_same_future(stream, copy);
        __zokDeleteStream(&stream);
        if (occupied) __zokDeleteStream(&(stream = old));
      } else {
        EXPECT_EQ(stream, nullptr);
        EXPECT_EQ(after, 0);
      }
    }
    // No memory for the name, the block, two chunks of two blocks.
    EXPECT_EQ(seen, (Statuses{{RNG_NO_MEMORY, 6}, {RNG_FILE_OPEN, 1}, {RNG_OK, tries - 7}}));
  }
}

}  // namespace
