// The tables of generators, how an identifier finds its row, and generators that users add.
#include <vector>

#include "stream_support.hpp"

using namespace orv_test;

namespace {

bool same(const BrngProperties& x, const BrngProperties& y) {
  return memcmp(&x, &y, sizeof x) == 0;
}

TEST(Registry, RowsHoldWhatTheGeneratorsAre) {
  const int32_t pointer = sizeof(void*);
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
      {pointer == 4 ? 36 : 48, 0, 1, 4, 32, 1},
      {pointer == 4 ? 52 : 64, 0, 1, 4, 32, 1},
      {pointer == 4 ? 44 : 56, 0, 1, 4, 32, 1},
      {2536, 625, 1, 16, 128, 1},
  };
  EXPECT_EQ(sizeof(BrngProperties), 20u + (pointer == 8 ? 4 : 0) + 4 * pointer);
  for (int row = 0; row < 13; ++row) {
    const BrngProperties& p = __RegBrngsNew[row];
    EXPECT_EQ((std::vector{p.StateSize, p.NumSeeds, p.IncludesZero, p.WordSize, p.NumBits,
                           NumOffsets[row]}),
              rows[row])
        << row;
    EXPECT_NE(p.InitStream, nullptr);
  }
  for (int r = 0; r < NRegBrngs; ++r) {
    const int high = r < 4 ? r : r < 277 ? 4 : r - 277 + 5;
    EXPECT_TRUE(same(__RegBrngs[r], __RegBrngsNew[high])) << r;
  }
  EXPECT_EQ(NRegBrngs, 279);
  EXPECT_EQ(__RegBrngs[279].StateSize, 0);
}

TEST(Registry, IdentifiersFindTableRowAndOffset) {
  const struct {
    int32_t brng;
    const BrngProperties* table;
    int32_t row, offset, valid;
  } cases[] = {
      {0, __RegBrngs, 0, 0, RNG_OK},
      {3, __RegBrngs, 3, 0, RNG_OK},
      {4, __RegBrngs, 4, 0, RNG_OK},
      {5, __RegBrngs, 4, 1, RNG_OK},
      {276, __RegBrngs, 4, 272, RNG_OK},
      {277, __RegBrngs, 277, 0, RNG_OK},
      {278, __RegBrngs, 278, 0, RNG_OK},
      {279, __RegBrngs, 279, 0, RNG_INVALID_BRNG},
      {0xFFFFF, __RegBrngs, 0xFFFFF, 0, RNG_INVALID_BRNG},
      {-1, __RegBrngs, -1, 0, RNG_OK},  // the test does not look at this side
      {INT32_MIN, __RegBrngs, INT32_MIN, 0, RNG_OK},
      {0x100000, __RegBrngsNew, 0, 0, RNG_OK},
      {0x100001, __RegBrngsNew, 0, 1, RNG_INVALID_BRNG},
      {0x400000, __RegBrngsNew, 3, 0, RNG_OK},
      {0x500110, __RegBrngsNew, 4, 272, RNG_OK},
      {0x500111, __RegBrngsNew, 4, 273, RNG_INVALID_BRNG},
      {0x9003FF, __RegBrngsNew, 8, 1023, RNG_OK},
      {0x900400, __RegBrngsNew, 8, 1024, RNG_INVALID_BRNG},
      {0xA00001, __RegBrngsNew, 9, 1, RNG_INVALID_BRNG},
      {0x7FFFFFFF, __RegBrngsNew, 2046, 0xFFFFF, RNG_INVALID_BRNG},
  };
  for (const auto& c : cases) {
    int32_t row = 77, offset = 77;
    const BrngProperties* const table = __zokGetBrngBaseOffset(c.brng, &row, &offset);
    EXPECT_EQ(table, c.table) << c.brng;
    EXPECT_EQ(row, c.row) << c.brng;
    EXPECT_EQ(offset, c.offset) << c.brng;
    EXPECT_EQ(__zokIsBrngValid(table, row, offset), c.valid) << c.brng;
    if (c.brng < 0) continue;
    BrngProperties p;
    p.StateSize = 77;
    EXPECT_EQ(__zokGetBrngProperties(c.brng, &p), c.valid) << c.brng;
    EXPECT_EQ(p.StateSize, c.valid == RNG_OK ? table[row].StateSize : 77) << c.brng;
  }
}

TEST(Registry, RegistrationReportsTheFirstBadField) {
  BrngProperties p = {-1, 0, 0, 5, 0, nullptr, nullptr, nullptr, nullptr};
  const int32_t before = __zokGetNumRegBrngs();
  const auto expect = [&](int32_t status) { EXPECT_EQ(__zokRegisterBrng(&p), status); };
  expect(RNG_BAD_STATE_SIZE);
  p.StateSize = 0;
  for (const int32_t size : {5, 0, -4, 12, 32}) {
    p.WordSize = size;
    expect(RNG_BAD_WORD_SIZE);
  }
  p.WordSize = 16;
  expect(RNG_BAD_NSEEDS);
  p.NumSeeds = 1;
  expect(RNG_BAD_NBITS);
  p.NumBits = 1;
  expect(RNG_NULL_ENTRY);
  for (int missing = 0; missing < 4; ++missing) {
    p = Spy::properties;
    if (missing == 0) p.dBRng = nullptr;
    if (missing == 1) p.sBRng = nullptr;
    if (missing == 2) p.iBRng = nullptr;
    if (missing == 3) p.InitStream = nullptr;
    expect(RNG_NULL_ENTRY);
  }
  EXPECT_EQ(__zokGetNumRegBrngs(), before);
}

TEST(Registry, ARegisteredGeneratorGetsTheNextIdentifier) {
  BrngProperties mine = Spy::properties;
  mine.NumBits = 17;
  int32_t before = __zokGetNumRegBrngs();
  EXPECT_GE(before, 13);
  for (int more = 0; more < 2; ++more, ++before) {
    const int32_t next = (before + 1) * 0x100000;
    BrngProperties read;
    EXPECT_EQ(__zokGetBrngProperties(next, &read), RNG_INVALID_BRNG);
    EXPECT_EQ(__zokRegisterBrng(&mine), next);
    EXPECT_EQ(__zokGetNumRegBrngs(), before + 1);
    EXPECT_EQ(NRegBrngsNew, before + 1);
    ASSERT_EQ(__zokGetBrngProperties(next, &read), RNG_OK);
    EXPECT_TRUE(same(read, mine));
    EXPECT_EQ(__zokGetBrngProperties(next + 1, &read), RNG_INVALID_BRNG);
    Stream stream(next);
    EXPECT_EQ(draw_words(stream, 3), (std::vector<uint32_t>{0, 1, 2}));
  }
}

}  // namespace
