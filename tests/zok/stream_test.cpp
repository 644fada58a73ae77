// Creating, copying and deleting streams and their chunks; what leapfrog and skip ahead hand to the
// generator.
#include <algorithm>
#include <future>
#include <string>
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
  EXPECT_EQ(stream->Chunks, 0);
  EXPECT_EQ(__zokSearchChunk(stream, 1), nullptr);
  EXPECT_EQ(__zokGetNumChunks(stream), 0);
  EXPECT_EQ(__zokDeleteChunks(stream), RNG_OK);
  void* const data[] = {orv_serv_orv_malloc(8, 32), orv_serv_orv_malloc(8, 32), nullptr};
  const uint32_t ids[] = {1, 1, 0xFFFFFFFF};
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(__zokAddChunk(stream, ids[i], data[i], i < 2 ? 8 : 0), RNG_OK);
    EXPECT_EQ(__zokGetNumChunks(stream), i + 1);
    EXPECT_EQ(__zokSearchChunk(stream, static_cast<int32_t>(ids[i])), data[i]);
    // The slot has 64 bits in every build; the address is sign-extended.
    EXPECT_EQ(stream->Chunks, static_cast<int64_t>(static_cast<intptr_t>(stream->Chunks)));
    EXPECT_EQ(stream->Chunks % 32, 0);
  }
  EXPECT_EQ(__zokSearchChunk(stream, 2), nullptr);
  EXPECT_EQ(__zokDeleteChunks(stream), RNG_OK);
  EXPECT_EQ(stream->Chunks, 0);
  EXPECT_EQ(__zokGetNumChunks(stream), 0);
}

TEST(Streams, CopiesAndLoadedStreamsGoOnExactly) {
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
      EXPECT_EQ(copy->HeaderMark, 5);
      EXPECT_EQ(loaded->HeaderMark, 1) << "not in the file";
      for (StreamState* const other :
           {static_cast<StreamState*>(copy), static_cast<StreamState*>(loaded)}) {
        EXPECT_EQ(other->Brng, g.brng);
        EXPECT_EQ(__zokGetNumChunks(other), 3);
        for (int id = 1; id <= 3; ++id) expect_chunk(other, id, id * 500, source);
        EXPECT_TRUE(future_of(other) == future);
      }
      source.reset();
      for (int id = 1; id <= 3; ++id) expect_chunk(copy, id, id * 500);
    }
  }
}

TEST(Streams, ACopyFindsTheSourcesOldestChunkOfAnIdentifier) {
  Stream source(BRNG_MCG59);
  add_chunk(source, 'o', 4);
  static_cast<char*>(__zokSearchChunk(source, 'o'))[0] = 'a';
  add_chunk(source, 'o', 4);
  static_cast<char*>(__zokSearchChunk(source, 'o'))[0] = 'b';
  Stream copy, again;
  __zokCopyStream(&copy, source);
  __zokCopyStream(&again, copy);
  EXPECT_EQ(static_cast<char*>(__zokSearchChunk(copy, 'o'))[0], 'a');
  EXPECT_EQ(static_cast<char*>(__zokSearchChunk(again, 'o'))[0], 'b');
}

/// A block on its own, so that what lies behind it can be looked at.
struct Block {
  static constexpr char mark = 0x55;
  explicit Block(StreamState* stream) : size(properties_of(stream->Brng).StateSize) {
    memset(bytes, mark, sizeof bytes);
    memcpy(bytes, stream, size);
  }
  StreamState* stream() { return reinterpret_cast<StreamState*>(bytes); }
  std::string state() const { return {bytes + 16, size - 16}; }
  std::string behind() const { return {bytes + size, sizeof bytes - size}; }

  size_t size;
  alignas(32) char bytes[16384];
};

TEST(Streams, StateCopiesTakeWhatSeedsMakeUpAndNoMore) {
  for (const Generator& from : generators) {
    for (const Generator& to : generators) {
      SCOPED_TRACE(std::string(from.name) + " to " + to.name);
      Stream source(from.brng, 1), destination(to.brng, 2);
      Block block(destination);
      const Block before(destination), source_block(source);
      const bool same_row = from.brng == to.brng;
      EXPECT_EQ(__zokCopyStreamState(block.stream(), source),
                same_row ? RNG_OK : RNG_BRNGS_INCOMPATIBLE);
      const BrngProperties p = properties_of(from.brng);
      const size_t copied = std::min({static_cast<size_t>(p.WordSize) * p.NumSeeds,
                                      state_bytes(from.brng), state_bytes(to.brng)});
      EXPECT_EQ(block.state(),
                source_block.state().substr(0, copied) + before.state().substr(copied));
      EXPECT_EQ(block.behind(), before.behind());
      EXPECT_EQ(memcmp(block.bytes, before.bytes, 16), 0);
    }
  }
}

TEST(Streams, StateCopiesKeepTheGeneratorsOwnParameters) {
  // A multiplier that leapfrog made, and a twister's parameters, are no part of the seeds.
  Stream plain(BRNG_MCG31M1, 1), jumping(BRNG_MCG31M1, 1);
  __zokLeapfrogStream(jumping, 0, 3);
  draw_words(plain, 8);
  ASSERT_EQ(__zokCopyStreamState(jumping, plain), RNG_OK);
  const std::vector<uint32_t> all = draw_words(plain, 7), third = draw_words(jumping, 3);
  EXPECT_EQ(third, (std::vector<uint32_t>{all[0], all[3], all[6]}));

  Stream first(BRNG_MT2203, 1), second(BRNG_MT2203 + 1, 2), expected(BRNG_MT2203 + 1, 1);
  ASSERT_EQ(__zokCopyStreamState(second, first), RNG_OK);
  EXPECT_TRUE(future_of(second) == future_of(expected));
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
    for (int id = 1; id <= 2; ++id) expect_chunk(destination, id, 40, source);
  }
}

TEST(Streams, LeapfrogAndSkipAheadReachTheGenerator) {
  Stream stream(Spy::brng());
  EXPECT_EQ(Spy::method, 0);
  EXPECT_EQ(Spy::n, 1);
  EXPECT_EQ(Spy::params[0], 4711u);
  Spy::answer = -5000;
  EXPECT_EQ(__zokLeapfrogStream(stream, -9, 0), -5000);
  EXPECT_EQ(__zokLeapfrogStream(stream, 1, -1), RNG_BAD_NSTREAMS);
  EXPECT_EQ(Spy::method, 1);
  EXPECT_EQ(Spy::n, 0);
  EXPECT_EQ(Spy::params[0], static_cast<uint32_t>(-9));
  EXPECT_EQ(__zokSkipAheadStream(stream, -0x123456789LL), -5000);
  Spy::answer = RNG_OK;
  EXPECT_EQ(Spy::method, 2);
  EXPECT_EQ(Spy::n, 2);
  EXPECT_EQ(Spy::params[0], 0u - 0x23456789u);
  EXPECT_EQ(Spy::params[1], 0xFFFFFFFEu);
}

/// Run it under ThreadSanitizer, too.
TEST(Streams, OfSeveralThreadsDoNotMeet) {
  const auto work = [] {
    std::vector<double> all;
    for (const Generator& g : generators) {
      Stream stream(g.brng), copy;
      add_chunk(stream, 1, 10);
      const MemoryFile file;
      __zokSkipAheadStream(stream, 1000);
      __zokLeapfrogStream(stream, 1, 3);
      for (const uint32_t w : draw_words(stream, 1000)) all.push_back(w);
      EXPECT_EQ(save(stream, file.name()), RNG_OK);
      EXPECT_EQ(load(&copy, file.name()), RNG_OK);
      for (const double x : draw_doubles(copy, 1000)) all.push_back(x);
    }
    return all;
  };
  const std::vector<double> expected = work();
  std::vector<std::future<std::vector<double>>> threads;
  for (int i = 0; i < 4; ++i) threads.push_back(std::async(std::launch::async, work));
  for (auto& thread : threads) EXPECT_EQ(thread.get(), expected);
}

}  // namespace
