// SPDX-License-Identifier: MIT
// The tables of generators, how an identifier finds its row, and generators that users add.
#include "stream_support.hpp"

using namespace orv_test;

namespace {

TEST(Registry, RowsHoldWhatTheGeneratorsAre) {
  const bool wide = sizeof(void*) == 8;
  // Bytes of the state, seeds, whether 0 is a word, bytes and bits of a word, offsets.
  const std::vector<int32_t> rows[13] = {
      {24, 1, 0, 4, 31, 1},
      {1024, 252, 1, 4, 32, 1},
      {40, 6, 1, 4, 32, 1},
      {32, 1, 0, 8, 59, 1},
      {48, 4, 1, 16, 24, 273},
      {10592, 2604, 0, 4, 32, 1},
      {43280, 10498, 0, 4, 32, 1},
      {2516, 625, 1, 4, 32, 1},
      {308, 70, 1, 4, 32, 1024},
      {wide ? 48 : 36, 0, 1, 4, 32, 1},
      {wide ? 64 : 52, 0, 1, 4, 32, 1},
      {wide ? 56 : 44, 0, 1, 4, 32, 1},
      {2536, 625, 1, 16, 128, 1},
  };
  for (int row = 0; row < 13; ++row) {
    const BrngProperties& p = __RegBrngsNew[row];
    EXPECT_EQ(rows[row], (std::vector{p.StateSize, p.NumSeeds, p.IncludesZero, p.WordSize,
                                      p.NumBits, NumOffsets[row]}));
  }
  for (int r = 0; r < 279; ++r) {
    const int high = r < 4 ? r : r < 277 ? 4 : r - 277 + 5;
    EXPECT_EQ(memcmp(&__RegBrngs[r], &__RegBrngsNew[high], sizeof(BrngProperties)), 0) << r;
  }
}

TEST(Registry, IdentifiersFindTableRowAndOffset) {
  const struct {
    int32_t brng;
    const BrngProperties* table;
    int32_t row, offset, valid;
  } cases[] = {
      {3, __RegBrngs, 3, 0, RNG_OK},
      {5, __RegBrngs, 4, 1, RNG_OK},
      {276, __RegBrngs, 4, 272, RNG_OK},
      {278, __RegBrngs, 278, 0, RNG_OK},
      {279, __RegBrngs, 279, 0, RNG_INVALID_BRNG},
      {INT32_MIN, __RegBrngs, INT32_MIN, 0, RNG_OK},  // the test does not look at this side
      {0x100000, __RegBrngsNew, 0, 0, RNG_OK},
      {0x100001, __RegBrngsNew, 0, 1, RNG_INVALID_BRNG},
      {0x500110, __RegBrngsNew, 4, 272, RNG_OK},
      {0x500111, __RegBrngsNew, 4, 273, RNG_INVALID_BRNG},
      {0x9003FF, __RegBrngsNew, 8, 1023, RNG_OK},
      {0x900400, __RegBrngsNew, 8, 1024, RNG_INVALID_BRNG},
      {0x7FFFFFFF, __RegBrngsNew, 2046, 0xFFFFF, RNG_INVALID_BRNG},
  };
  for (const auto& c : cases) {
    int32_t row = 77, offset = 77;
    const BrngProperties* const table = __zokGetBrngBaseOffset(c.brng, &row, &offset);
    SCOPED_TRACE(c.brng);
    EXPECT_EQ(table, c.table);
    EXPECT_EQ(std::pair(row, offset), std::pair(c.row, c.offset));
    EXPECT_EQ(__zokIsBrngValid(table, row, offset), c.valid);
    if (c.brng < 0) continue;
    BrngProperties p;
    p.StateSize = 77;
    EXPECT_EQ(__zokGetBrngProperties(c.brng, &p), c.valid);
    EXPECT_EQ(p.StateSize, c.valid == RNG_OK ? table[row].StateSize : 77);
  }
}

TEST(Registry, RegistrationReportsTheFirstBadFieldOrGivesTheNextIdentifier) {
  const struct {
    void (*spoil)(BrngProperties& p);
    int32_t status;
  } faults[] = {
      // the last that is looked at comes first
      {[](auto& p) { p.InitStream = nullptr; }, RNG_NULL_ENTRY},
      {[](auto& p) { p.iBRng = nullptr; }, RNG_NULL_ENTRY},
      {[](auto& p) { p.sBRng = nullptr; }, RNG_NULL_ENTRY},
      {[](auto& p) { p.dBRng = nullptr; }, RNG_NULL_ENTRY},
      {[](auto& p) { p.NumBits = 0; }, RNG_BAD_NBITS},
      {[](auto& p) { p.NumSeeds = 0; }, RNG_BAD_NSEEDS},
      {[](auto& p) { p.WordSize = 32; }, RNG_BAD_WORD_SIZE},
      {[](auto& p) { p.WordSize = 12; }, RNG_BAD_WORD_SIZE},
      {[](auto& p) { p.StateSize = -1; }, RNG_BAD_STATE_SIZE},
  };
  const int32_t before = __zokGetNumRegBrngs();
  BrngProperties with_later = Spy::properties;
  for (const auto& [spoil, status] : faults) {
    BrngProperties alone = Spy::properties;
    spoil(alone);
    spoil(with_later);
    EXPECT_EQ(__zokRegisterBrng(&alone), status);
    EXPECT_EQ(__zokRegisterBrng(&with_later), status);
  }
  // None of these, but one that is good.
  const int32_t next = (before + 1) * 0x100000;
  EXPECT_EQ(__zokGetNumRegBrngs(), before);
  BrngProperties read;
  EXPECT_EQ(__zokGetBrngProperties(next, &read), RNG_INVALID_BRNG);
  EXPECT_EQ(__zokRegisterBrng(&Spy::properties), next);
  EXPECT_EQ(__zokGetNumRegBrngs(), before + 1);
  ASSERT_EQ(__zokGetBrngProperties(next, &read), RNG_OK);
  EXPECT_EQ(memcmp(&read, &Spy::properties, sizeof read), 0);
  EXPECT_EQ(__zokGetBrngProperties(next + 1, &read), RNG_INVALID_BRNG);
  EXPECT_EQ(draw_words(Stream(next), 3), (std::vector<uint32_t>{0, 1, 2}));
}

}  // namespace
