// The list of chunks on a stream.
#include "stream_support.hpp"

using namespace orv_test;

namespace {

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

}  // namespace
