// Creating, copying and deleting streams and their chunks.
#include <algorithm>
#include <string>
#include <thread>
#include <vector>

#include "stream_support.hpp"

using namespace orv_test;

namespace {

TEST(Streams, AFailedInitialisationLeavesTheBlock) {
  const uint32_t seed = 1;
  Spy::answer = -77;
  for (const int32_t brng : {int32_t{BRNG_SOBOL}, int32_t{BRNG_NIEDERR}, 278, Spy::brng()}) {
    const int32_t status = brng == Spy::brng() ? -77 : RNG_INVALID_BRNG;
    Stream stream;
    EXPECT_EQ(__zokNewStreamEx(&stream, brng, 1, &seed), status);
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(stream->Brng, brng);
    double r;
    EXPECT_EQ(_zokdRngUniform(0, stream, 1, &r, 0, 1), status);
  }
  Spy::answer = RNG_OK;
}

TEST(Chunks, TheNewestOfAnIdentifierIsFound) {
  Stream stream(BRNG_MCG31M1);
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(stream->Chunks, 0);
    EXPECT_EQ(__zokGetNumChunks(stream), 0);
    EXPECT_EQ(__zokSearchChunk(stream, 1), nullptr);
    int32_t count = 0;
    for (const uint32_t id : {1u, 1u, 0xFFFFFFFF}) {
      void* const data = id == 1 ? orv_serv_orv_malloc(8, 32) : nullptr;
      EXPECT_EQ(__zokAddChunk(stream, id, data, id == 1 ? 8 : 0), RNG_OK);
      EXPECT_EQ(__zokGetNumChunks(stream), ++count);
      EXPECT_EQ(__zokSearchChunk(stream, static_cast<int32_t>(id)), data);
      // The slot has 64 bits in every build; the address is sign-extended.
      EXPECT_EQ(stream->Chunks, static_cast<int64_t>(static_cast<intptr_t>(stream->Chunks)));
      EXPECT_EQ(stream->Chunks % 32, 0);
    }
    EXPECT_EQ(__zokSearchChunk(stream, 2), nullptr);
    EXPECT_EQ(__zokDeleteChunks(stream), RNG_OK);
  }
}

void expect_copies_to_go_on() {
  const MemoryFile file;
  for (const Generator& g : generators) {
    for (const int32_t drawn : {1, 2, 138, 250, 625, 1001}) {
      SCOPED_TRACE(testing::Message() << g.name << " after " << drawn);
      Stream source(g.brng), copy, loaded;
      draw_doubles(source, drawn);  // leaves a twister's spare words behind
      for (int id = 1; id <= 3; ++id) add_chunk(source, id, id * 500);
      source->HeaderMark = 5;
      ASSERT_EQ(__zokCopyStream(&copy, source), RNG_OK);
      ASSERT_EQ(save(source, file.name()), RNG_OK);
      ASSERT_EQ(load(&loaded, file.name()), RNG_OK);
      const std::string future = future_of(source);
      memset(__zokSearchChunk(source, 1), 0, 500);  // the others have their own
      source.reset();
      EXPECT_EQ(copy->HeaderMark, 5);
      EXPECT_EQ(loaded->HeaderMark, 1) << "not in the file";
      for (StreamState* const other : {copy.get(), loaded.get()}) {
        EXPECT_EQ(other->Brng, g.brng);
        EXPECT_EQ(__zokGetNumChunks(other), 3);
        EXPECT_EQ(*reinterpret_cast<int*>(static_cast<intptr_t>(other->Chunks)), 1) << "the oldest";
        for (int id = 1; id <= 3; ++id) expect_chunk(other, id, id * 500);
        EXPECT_TRUE(future_of(other) == future);
      }
    }
  }
}

/// Run it under ThreadSanitizer, too.
TEST(Streams, CopiesAndLoadedOnesGoOnExactlyInSeveralThreads) {
  std::vector<std::jthread> threads;
  for (int i = 0; i < 3; ++i) threads.emplace_back(expect_copies_to_go_on);
  expect_copies_to_go_on();
}

TEST(Streams, StateCopiesTakeWhatSeedsMakeUpAndNoMore) {
  // A multiplier that leapfrog made, and a twister's parameters, are no part of the seeds.
  for (const Generator& from : generators) {
    for (const Generator& to : generators) {
      SCOPED_TRACE(std::string(from.name) + " to " + to.name);
      const Stream source(from.brng);
      alignas(32) char block[16384];
      memset(block, 0x55, sizeof block);
      auto* const destination = reinterpret_cast<StreamState*>(block);
      *destination = {to.brng, 1, 0};
      EXPECT_EQ(__zokCopyStreamState(destination, source),
                from.brng == to.brng ? RNG_OK : RNG_BRNGS_INCOMPATIBLE);
      EXPECT_EQ(destination->Brng, to.brng);
      const BrngProperties p = properties_of(from.brng);
      const size_t copied = std::min({static_cast<size_t>(p.WordSize) * p.NumSeeds,
                                      state_bytes(from.brng), state_bytes(to.brng)});
      EXPECT_EQ(memcmp(destination + 1, source + 1, copied), 0);
      const size_t end = sizeof(StreamState) + copied;
      EXPECT_EQ(std::string(block + end, sizeof block - end),
                std::string(sizeof block - end, 0x55));
    }
  }
}

TEST(Streams, StateCopiesBringTheChunks) {
  for (const int32_t brng : {BRNG_MCG59, BRNG_MCG31M1}) {
    Stream source(BRNG_MCG59), destination(brng, 9);
    add_chunk(destination, 7, 20);
    EXPECT_EQ(__zokCopyStreamState(destination, destination), RNG_OK);
    EXPECT_EQ(__zokGetNumChunks(destination), 1);
    const int32_t rows = brng == BRNG_MCG59 ? RNG_OK : RNG_BRNGS_INCOMPATIBLE;
    EXPECT_EQ(__zokCopyStreamState(destination, source), rows);
    EXPECT_EQ(__zokGetNumChunks(destination), 0);
    for (int id = 1; id <= 2; ++id) add_chunk(source, id, 40);
    EXPECT_EQ(__zokCopyStreamState(destination, source), RNG_OK) << "chunks hide the rows";
    for (int id = 1; id <= 2; ++id) expect_chunk(destination, id, 40);
  }
}

}  // namespace
