// Creating, copying and deleting streams; what leapfrog and skip ahead hand to the generator.
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
  const int32_t status[] = {RNG_INVALID_BRNG, RNG_INVALID_BRNG, RNG_INVALID_BRNG, -77};
  const int32_t brngs[] = {BRNG_SOBOL, BRNG_NIEDERR, 278, Spy::brng()};
  for (int i = 0; i < 4; ++i) {
    Stream stream;
    EXPECT_EQ(__zokNewStreamEx(&stream, brngs[i], 1, &seed), status[i]);
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(stream->Brng, brngs[i]);
    double r;
    EXPECT_EQ(_zokdRngUniform(0, stream, 1, &r, 0, 1), status[i]);
  }
  Spy::answer = RNG_OK;
}

TEST(Streams, LowAndHighIdentifiersReachTheSameGenerator) {
  const int32_t pairs[][2] = {{3, 0x400000}, {0, 0x100000}, {4, 0x500000}, {276, 0x500110}};
  for (const auto& pair : pairs) {
    Stream low(pair[0]), high(pair[1]);
    EXPECT_EQ(low->Brng, pair[0]);
    EXPECT_EQ(high->Brng, pair[1]);
    EXPECT_EQ(draw_words(low, 50), draw_words(high, 50));
  }
  Stream first(4), last(276);
  EXPECT_NE(draw_words(first, 50), draw_words(last, 50));
}

TEST(Streams, CopiesGoOnExactly) {
  for (const Generator& g : generators) {
    SCOPED_TRACE(g.name);
    for (const int32_t drawn : {0, 1, 137, 1000}) {
      Stream source(g.brng);
      draw_doubles(source, drawn + 1);  // leaves a twister's spare words behind
      for (int id = 1; id <= 3; ++id) add_chunk(source, id, id * 10);
      source->HeaderMark = 5;
      Stream copy;
      ASSERT_EQ(__zokCopyStream(&copy, source), RNG_OK);
      EXPECT_EQ(copy->HeaderMark, 5);
      EXPECT_EQ(copy->Brng, g.brng);
      EXPECT_EQ(__zokGetNumChunks(copy), 3);
      for (int id = 1; id <= 3; ++id) expect_chunk(copy, id, id * 10, source);
      expect_same_future(source, copy);
      draw_words(source, 3);
      source.reset();
      for (int id = 1; id <= 3; ++id) expect_chunk(copy, id, id * 10);
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
  expect_same_future(second, expected);
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
      EXPECT_EQ(__zokSaveStreamF(stream, file.name().c_str(), -1), RNG_OK);
      EXPECT_EQ(__zokLoadStreamF(&copy, file.name().c_str(), -1), RNG_OK);
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
