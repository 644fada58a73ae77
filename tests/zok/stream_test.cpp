// SPDX-License-Identifier: MIT
// Creating, copying and deleting streams and their chunks.
#include <algorithm>
#include <thread>

#include "stream_support.hpp"

using namespace orv_test;

namespace {

TEST(Streams, AFailedInitialisationLeavesTheBlock) {
  const uint32_t seed = 1;
  Spy::answer = -77;
  Stream stream;
  EXPECT_EQ(__zokNewStreamEx(&stream, Spy::brng(), 1, &seed), -77);
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(stream->Brng, Spy::brng());
  double r;
  EXPECT_EQ(_zokdRngUniform(0, stream, 1, &r, 0, 1), -77);
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
  const std::string name = memory_file();
  for (const int32_t brng : generators) {
    for (const int32_t drawn : {1, 2, 138, 250, 625, 1001}) {
      SCOPED_TRACE(testing::Message() << brng << " after " << drawn);
      Stream source(brng), copy, loaded;
      draw<double>(source, drawn);  // leaves a twister's spare words behind
      add_chunks(source, 3, 500);
      source->HeaderMark = 5;
      ASSERT_EQ(__zokCopyStream(&copy, source), RNG_OK);
      ASSERT_EQ(save(source, name), RNG_OK);
      ASSERT_EQ(load(&loaded, name), RNG_OK);
      const std::string future = future_of(source);
      memset(__zokSearchChunk(source, 1), 0, 500);  // the others have their own
      __zokDeleteStream(&source);
      EXPECT_EQ(copy->HeaderMark, 5);
      EXPECT_EQ(loaded->HeaderMark, 1) << "not in the file";
      for (StreamState* const other : {+copy, +loaded}) {
        EXPECT_EQ(other->Brng, brng);
        EXPECT_EQ(*reinterpret_cast<int*>(static_cast<intptr_t>(other->Chunks)), 1) << "the oldest";
        expect_chunks(other, 3, 500);
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
  for (const int32_t from : generators) {
    for (const int32_t to : generators) {
      SCOPED_TRACE(testing::Message() << from << " to " << to);
      const Stream source(from);
      alignas(32) char block[16384];
      memset(block, 0x55, sizeof block);
      auto* const destination = reinterpret_cast<StreamState*>(block);
      *destination = {to, 1, 0};
      EXPECT_EQ(__zokCopyStreamState(destination, source),
                from == to ? RNG_OK : RNG_BRNGS_INCOMPATIBLE);
      EXPECT_EQ(destination->Brng, to);
      const BrngProperties p = properties_of(from);
      const size_t end = std::min({sizeof(StreamState) + p.WordSize * p.NumSeeds,
                                   size_t(p.StateSize), size_t(properties_of(to).StateSize)});
      EXPECT_EQ(memcmp(destination + 1, source + 1, end - sizeof(StreamState)), 0);
      EXPECT_EQ(std::count(block + end, std::end(block), 0x55), std::end(block) - (block + end));
    }
  }
}

TEST(Streams, StateCopiesBringTheChunks) {
  for (const int32_t brng : {BRNG_MCG59, BRNG_MCG31M1}) {
    Stream source(BRNG_MCG59), destination(brng, {9});
    add_chunks(destination, 1);
    EXPECT_EQ(__zokCopyStreamState(destination, destination), RNG_OK);
    expect_chunks(destination, 1);
    const int32_t rows = brng == BRNG_MCG59 ? RNG_OK : RNG_BRNGS_INCOMPATIBLE;
    EXPECT_EQ(__zokCopyStreamState(destination, source), rows);
    expect_chunks(destination, 0);
    add_chunks(source, 2);
    EXPECT_EQ(__zokCopyStreamState(destination, source), RNG_OK) << "chunks hide the rows";
    expect_chunks(destination, 2);
  }
}

}  // namespace
