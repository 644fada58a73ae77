// SPDX-License-Identifier: MIT
// Quasi-random streams against points summed up from plainly made direction numbers, against
// published points, and as nets; users' data, selections, skips, copies and damaged states.
#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <random>

#include "stream_support.hpp"

using namespace orv_test;

namespace {

using Words = std::vector<uint32_t>;
using Table = std::vector<Words>;  // a row of 32 direction numbers for each dimension

constexpr int32_t coordinate_only = 0x7FFFFFFF;

// ---- Plain models -------------------------------------------------------------------------------

int degree(uint64_t p) { return 63 - __builtin_clzll(p); }

Words sobol_numbers(uint32_t p, const Words& initial) {
  const int e = degree(p);
  Words v;
  std::vector<uint64_t> m;
  for (int j = 0; j < 32; ++j) {
    uint64_t next = j < e && j < int(initial.size()) ? initial[j] : 1;
    if (e > 0 && j >= e) {
      next = m[j - e];
      for (int i = 0; i < e; ++i) next ^= (p >> i & 1) * (m[j - e + i] << (e - i));
    }
    m.push_back(next);
    v.push_back(static_cast<uint32_t>(next << (31 - j)));
  }
  return v;
}

/// Entry by entry: row j of the matrix has v(r + j mod e) in column r, v from power j / e + 1 on.
Words niederr_numbers(uint32_t p) {
  const int e = degree(p);
  Words numbers(32, 0);
  uint64_t b = 1;
  std::vector<int> v;
  for (int j = 0; j < 32; ++j) {
    if (j % e == 0) {
      const int before = degree(b);
      uint64_t product = 0;
      for (int i = 0; i <= e; ++i) product ^= (p >> i & 1) * (b << i);
      b = product;
      v.assign(before, 0);
      while (int(v.size()) < degree(b)) v.push_back(1);
      while (int(v.size()) < e + 31) {
        int next = 0;
        for (int i = 0; i < degree(b); ++i) next ^= (b >> i & 1) & v[v.size() - degree(b) + i];
        v.push_back(next);
      }
    }
    for (int r = 0; r < 32; ++r) numbers[r] |= static_cast<uint32_t>(v[r + j % e]) << (31 - j);
  }
  return numbers;
}

Table built_in(int32_t brng, uint32_t dims) {
  Table table;
  for (uint32_t d = 0; d < dims; ++d) {
    if (brng == BRNG_NIEDERR) {
      table.push_back(niederr_numbers(uNiederrIrredPoly[d]));
    } else {
      table.push_back(d == 0 ? sobol_numbers(1, {})
                             : sobol_numbers(uSobolIrredPoly[d - 1],
                                             Words(uSobolMInit[d - 1], uSobolMInit[d - 1] + 8)));
    }
  }
  return table;
}

/// Coordinate d of point c.
uint32_t coordinate(const Table& table, uint64_t c, size_t d) {
  uint32_t word = 0;
  for (int j = 0; j < 32; ++j) word ^= ((c ^ c >> 1) >> j & 1) * table[d][j];
  return word;
}

/// Elements from number `first` on, the first point's first coordinate being 0.
Words elements(const Table& table, uint64_t first, size_t count) {
  Words words;
  for (uint64_t i = first; i < first + count; ++i) {
    words.push_back(coordinate(table, i / table.size() + 1, i % table.size()));
  }
  return words;
}

// ---- Streams with data of a user's own ----------------------------------------------------------

std::mt19937 random_words(3);

Table random_table(uint32_t dims) {
  Table table(dims, Words(32));
  for (Words& row : table) std::ranges::generate(row, std::ref(random_words));
  return table;
}

Words joined(Words words, const Table& rows) {
  for (const Words& row : rows) words.insert(words.end(), row.begin(), row.end());
  return words;
}

struct Case {
  int32_t brng;
  Words seeds;
  Table table;
};

Case plain(int32_t brng, uint32_t dims) { return {brng, {dims}, built_in(brng, dims)}; }
Case of_numbers(int32_t brng, uint32_t dims) {
  const Table table = random_table(dims);
  return {brng, joined({dims, 1, 4}, table), table};
}

std::vector<Case> all_cases() {
  std::vector<Case> cases;
  for (const uint32_t dims : {1, 2, 3, 4, 7, 10, 15, 16, 17, 23, 40}) {
    cases.push_back(plain(BRNG_SOBOL, dims));
  }
  for (const uint32_t dims : {1, 3, 10, 16, 21, 318}) cases.push_back(plain(BRNG_NIEDERR, dims));
  for (const uint32_t dims : {1, 9, 40, 41, 53, 512, 513}) {
    cases.push_back(of_numbers(BRNG_SOBOL, dims));
  }
  for (const uint32_t dims : {2, 308, 309, 318, 319, 600}) {
    cases.push_back(of_numbers(BRNG_NIEDERR, dims));
  }
  return cases;
}

// ---- Sequences ----------------------------------------------------------------------------------

// P. Bratley and B. Fox's points (1988), and those of Bratley, Fox and Niederreiter (1992) without
// the point 0, as the GNU Scientific Library has them.
TEST(QuasiRandom, FirstPointsAreThePublishedOnes) {
  const auto points = [](int32_t brng, uint32_t dims, int32_t count) {
    return draw<double>(Stream(brng, {dims}), static_cast<int32_t>(dims) * count);
  };
  EXPECT_EQ(draw<double>(Stream(BRNG_SOBOL, Words{}), 3), (std::vector{0.5, 0.75, 0.25}));
  EXPECT_EQ(
      points(BRNG_SOBOL, 4, 10),
      (std::vector<double>{.5,    .5,    .5,    .5,    .75,   .25,   .75,   .25,   .25,   .75,
                           .25,   .75,   .375,  .375,  .625,  .125,  .875,  .875,  .125,  .625,
                           .625,  .125,  .375,  .375,  .125,  .625,  .875,  .875,  .1875, .3125,
                           .3125, .6875, .6875, .8125, .8125, .1875, .9375, .0625, .5625, .9375}));
  EXPECT_EQ(points(BRNG_NIEDERR, 4, 6),
            (std::vector{0.5,   0.5,   0.75,   0.875,    0.75,  0.25,  0.3125, 0.140625,
                         0.25,  0.75,  0.5625, 0.765625, 0.375, 0.375, 0.875,  0.28125,
                         0.875, 0.875, 0.125,  0.65625,  0.625, 0.125, 0.6875, 0.421875}));
}

/// A box for each way of giving `bits` halvings to the dimensions; all hold equally many points.
void expect_boxes(const std::vector<Words>& points, std::vector<int>& halvings, int bits) {
  if (halvings.size() + 1 < points[0].size()) {
    for (int k = 0; k <= bits; ++k) {
      halvings.push_back(k);
      expect_boxes(points, halvings, bits - k);
      halvings.pop_back();
    }
    return;
  }
  halvings.push_back(bits);
  const int all = std::accumulate(halvings.begin(), halvings.end(), 0);
  std::vector<size_t> counts(size_t{1} << all);
  for (const Words& point : points) {
    size_t box = 0;
    for (size_t d = 0; d < point.size(); ++d) {
      box = box << halvings[d] | (uint64_t{point[d]} >> (32 - halvings[d]));
    }
    ++counts[box];
  }
  EXPECT_THAT(counts, testing::Each(points.size() >> all)) << testing::PrintToString(halvings);
  halvings.pop_back();
}

TEST(QuasiRandom, RunsOfPointsAreNets) {
  const struct {
    int32_t brng;
    uint32_t dims;
    int t, m;
  } cases[] = {
      {BRNG_SOBOL, 1, 0, 10},  {BRNG_SOBOL, 2, 0, 9},   {BRNG_SOBOL, 3, 1, 9},
      {BRNG_SOBOL, 4, 3, 9},   {BRNG_SOBOL, 5, 5, 10},  {BRNG_NIEDERR, 1, 0, 10},
      {BRNG_NIEDERR, 2, 0, 9}, {BRNG_NIEDERR, 3, 1, 9}, {BRNG_NIEDERR, 5, 5, 10},
  };
  for (const auto& [brng, dims, t, m] : cases) {
    const Stream stream(brng, {dims});
    EXPECT_EQ(__zokSkipAheadStream(stream, ((1 << m) - 1) * int64_t{dims}), RNG_OK);
    for (int run = 1; run <= 3; ++run) {
      SCOPED_TRACE(testing::Message() << brng << " " << dims << " run " << run);
      std::vector<Words> points(size_t{1} << m);
      for (Words& point : points) point = draw_words(stream, static_cast<int32_t>(dims));
      std::vector<int> halvings;
      expect_boxes(points, halvings, m - t);
    }
  }
}

constexpr double low = -1.25, high = 7.3;
constexpr float float_low = 0.1f, float_high = 0.7f;

template <class T>
std::vector<T> numbers(int32_t brng, const Words& words, T a, T b) {
  const bool halved = brng == BRNG_SOBOL;
  const auto width = T(double(b) - double(a)), s = T(width * (halved ? 0x1p-31 : 0x1p-32));
  std::vector<T> r;
  for (const uint32_t word : words) {
    const T signed_word =
        halved ? T(static_cast<int32_t>(word >> 1)) : T(static_cast<int32_t>(word));
    const T whole = halved || word < 0x80000000 ? signed_word : T(signed_word + T(0x1p32));
    const T product = whole * s;
    r.push_back(a + product);
  }
  return r;
}

/// Places before and after are left alone.
template <class T, class Entry, class... Range>
std::vector<T> drawn(Entry entry, StreamState* stream, int32_t n, size_t offset, Range... range) {
  std::vector<T> r(std::max(n, 0) + offset + 1, T(77));
  EXPECT_EQ(entry(stream, n, r.data() + offset, range...), RNG_OK);
  EXPECT_TRUE(r[offset - 1] == T(77) && r.back() == T(77)) << n;
  return {r.begin() + offset, r.end() - 1};
}

TEST(QuasiRandom, AnySplitInAnyFlavourGivesThePlainSequence) {
  std::mt19937 random(1);
  for (const auto& [brng, seeds, table] : all_cases()) {
    const Stream stream(brng, seeds);
    const BrngProperties row = properties_of(brng);
    const auto dims = static_cast<int32_t>(table.size());
    std::vector<int32_t> sizes = {0,        -1,        INT32_MIN,     1,   dims,
                                  3 * dims, 64 * dims, 70 * dims + 1, 2500};
    for (int k = 0; k < 24; ++k)
      sizes.push_back(static_cast<int32_t>(random() % (k % 3 ? 90 : 4000)));
    std::shuffle(sizes.begin(), sizes.end(), random);
    uint64_t at = 0;
    for (const int32_t n : sizes) {
      SCOPED_TRACE(testing::Message() << brng << " " << dims << " " << n << " at " << at);
      const Words words = elements(table, at, std::max(n, 0));
      const size_t offset = 1 + random() % 8;
      switch (random() % 3) {
        case 0:
          ASSERT_EQ(drawn<uint32_t>(row.iBRng, stream, n, offset), words);
          break;
        case 1:
          ASSERT_EQ(drawn<double>(row.dBRng, stream, n, offset, low, high),
                    numbers(brng, words, low, high));
          break;
        default:
          ASSERT_EQ(drawn<float>(row.sBRng, stream, n, offset, float_low, float_high),
                    numbers(brng, words, float_low, float_high));
      }
      at += words.size();
    }
  }
}

TEST(QuasiRandom, SkipsPassWhatDrawsWouldDeliver) {
  std::mt19937 random(2);
  for (const auto& [brng, seeds, table] : all_cases()) {
    const Stream stream(brng, seeds);
    uint64_t at = 0;
    for (int k = 0; k < 40; ++k) {
      SCOPED_TRACE(testing::Message() << brng << " " << table.size() << " at " << at);
      const uint64_t skip =
          k % 8 == 7 ? random() * table.size() / 16 : random() % (2 * table.size());
      ASSERT_EQ(__zokSkipAheadStream(stream, static_cast<int64_t>(skip)), RNG_OK);
      const auto count = static_cast<int32_t>(random() % 3 ? random() % table.size() : 70);
      ASSERT_EQ(draw_words(stream, count), elements(table, at + skip, count));
      at += skip + count;
    }
  }
}

Words of_one(const Table& table, uint64_t c, size_t d, int count) {
  Words words;
  for (int i = 0; i < count; ++i) words.push_back(coordinate(table, c + i, d));
  return words;
}

TEST(QuasiRandom, ASelectionDeliversOneCoordinateOfThePointsToCome) {
  for (const Case& each : all_cases()) {
    const Table& table = each.table;
    const int32_t brng = each.brng, dims = static_cast<int32_t>(table.size());
    for (const int32_t begun : {0, 1, dims / 2, dims - 1}) {
      for (const int32_t k : {0, dims / 2, dims - 1}) {
        SCOPED_TRACE(testing::Message() << brng << " " << dims << " " << begun << " " << k);
        const Stream stream(brng, each.seeds);
        draw_words(stream, 5 * dims + begun % dims);
        for (const auto& [index, streams] :
             {std::pair{k, 5}, {dims, coordinate_only}, {-1, coordinate_only}}) {
          EXPECT_EQ(__zokLeapfrogStream(stream, index, streams), RNG_LEAPFROG_UNSUPPORTED);
        }
        uint64_t c = k < begun % dims ? 7 : 6;
        const auto expect = [&](int32_t d, int count) {
          EXPECT_EQ(__zokLeapfrogStream(stream, d, coordinate_only), RNG_OK);
          EXPECT_EQ(draw_words(stream, count), of_one(table, c, d, count));
          c += count;
        };
        expect(k, 200);
        expect(k, 3);
        if (dims == 1) continue;
        c += 1;  // for another coordinate a point is passed over
        expect((k + 1) % dims, 9);
        EXPECT_EQ(__zokSkipAheadStream(stream, 4 * dims), RNG_OK) << "of whole points";
        c += 4;
        expect((k + 1) % dims, 2);
      }
    }
  }
}

struct Fields {
  uint32_t count, dim;
  int32_t selected;
  uint32_t open;
};
Fields& fields_of(StreamState* stream) { return *reinterpret_cast<Fields*>(stream + 1); }

TEST(QuasiRandom, TheEndOfTheSequenceIsRefusedWithNothingDone) {
  for (const int32_t brng : {int32_t{BRNG_SOBOL}, int32_t{BRNG_NIEDERR}, 277, 278}) {
    SCOPED_TRACE(brng);
    const Stream stream(brng, {3});
    draw_words(stream, 1);
    EXPECT_EQ(fields_of(stream).open, 2u);
    EXPECT_EQ(__zokSkipAheadStream(stream, 1), RNG_OK);
    EXPECT_EQ(fields_of(stream).open, 1u);
    EXPECT_EQ(fields_of(stream).count, 1u);
    for (const int64_t skip :
         {int64_t{3} * 0xFFFFFFFE, int64_t{3} * 0xFFFFFFFF, INT64_MAX, int64_t{-1}}) {
      EXPECT_EQ(__zokSkipAheadStream(stream, skip), RNG_SKIPAHEAD_UNSUPPORTED);
    }
    const uint32_t two[] = {3, 0};
    EXPECT_EQ(properties_of(brng).InitStream(2, stream, 0, two), RNG_SKIPAHEAD_UNSUPPORTED);
    EXPECT_EQ(properties_of(brng).InitStream(3, stream, 2, two), RNG_BAD_METHOD);
    EXPECT_EQ(__zokSkipAheadStream(stream, 1 + 3 * 0xFFFFFFF5ll), RNG_OK);
    EXPECT_EQ(fields_of(stream).count, 0xFFFFFFF7u);
    uint32_t r[12];
    double x[12];
    float y[12];
    EXPECT_EQ(_zokiRngUniformBits(0, stream, 9, r), RNG_QRNG_EXHAUSTED);
    EXPECT_EQ(_zokdRngUniform(0, stream, 9, x, 0, 1), RNG_QRNG_EXHAUSTED);
    EXPECT_EQ(_zoksRngUniform(0, stream, 9, y, 0, 1), RNG_QRNG_EXHAUSTED);
    const Table table = built_in(brng == 277 || brng == BRNG_SOBOL ? BRNG_SOBOL : BRNG_NIEDERR, 3);
    EXPECT_EQ(draw_words(stream, 8), elements(table, 3 * 0xFFFFFFF6ll, 8));
    EXPECT_EQ(__zokSkipAheadStream(stream, 3 * 5), RNG_OK);
    EXPECT_EQ(__zokLeapfrogStream(stream, 2, coordinate_only), RNG_OK);
    EXPECT_EQ(draw_words(stream, 1), Words{coordinate(table, 0xFFFFFFFE, 2)});
    EXPECT_EQ(__zokLeapfrogStream(stream, 1, coordinate_only), RNG_QRNG_EXHAUSTED);
    EXPECT_EQ(_zokiRngUniformBits(0, stream, 1, r), RNG_QRNG_EXHAUSTED);
  }
}

// ---- Seeds --------------------------------------------------------------------------------------

TEST(QuasiRandom, SeedsOfNoFormMeanTheTablesBuiltIn) {
  const uint32_t polynomial = 0x1F;
  const struct {
    int32_t brng;
    Words seeds;
    uint32_t dims;
  } cases[] = {
      {BRNG_SOBOL, {}, 1},
      {BRNG_SOBOL, {41}, 1},
      {BRNG_SOBOL, {0}, 1},
      {BRNG_SOBOL, {0x80000005}, 1},
      {BRNG_SOBOL, {5, 1}, 5},
      {BRNG_SOBOL, {50, 1, 4}, 1},
      {BRNG_SOBOL, {3, 2, 1, polynomial, polynomial}, 3},
      {BRNG_SOBOL, {3, 1, 5, polynomial, polynomial}, 3},
      {BRNG_SOBOL, {3, 1, 1, polynomial}, 3},
      {BRNG_SOBOL, joined({41, 1, 1}, Table(40, {7})), 1},
      {BRNG_SOBOL, {3, 1, 2, 2, 1, 1, 1}, 3},
      {BRNG_SOBOL, {3, 1, 2, 0xFFFFFFFF, 1, 1, 1}, 3},
      {BRNG_SOBOL, {0x7FFFFFFF, 1, 3, 7, 7}, 1},
      {BRNG_SOBOL, {3, 1, 3, 7, 7}, 3},
      {BRNG_SOBOL, {3, 1, 3, 7, 7, 2, 1, 1, 1}, 3},
      {BRNG_SOBOL, {3, 1, 11, 7, 7, 7, 1, 1, 1}, 3},
      {BRNG_SOBOL, {0x7FFFFFFF, 1, 4, 7, 7}, 1},
      {BRNG_SOBOL, joined({2, 1, 4}, Table(63, {7})), 2},
      {BRNG_NIEDERR, {}, 1},
      {BRNG_NIEDERR, {319}, 1},
      {BRNG_NIEDERR, {318, 1}, 318},
      {BRNG_NIEDERR, {3, 1, 1, 7, 7}, 3},
      {BRNG_NIEDERR, {3, 1, 1, 7, 1, 7}, 3},
      {BRNG_NIEDERR, {3, 1, 2, 7, 7, 7}, 3},
      {BRNG_NIEDERR, {0x7FFFFFFF, 1, 1, 7, 7, 7}, 1},
      {BRNG_NIEDERR, joined({2, 1, 4}, Table(63, {7})), 2},
      {BRNG_NIEDERR, {400, 1, 4, 7}, 1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << "case " << &c - cases);
    const Stream stream(c.brng, Words(c.seeds));
    EXPECT_EQ(__zokGetNumChunks(stream), 0);
    EXPECT_EQ(fields_of(stream).dim, c.dims);
    EXPECT_EQ(draw_words(stream, 700), elements(built_in(c.brng, c.dims), 0, 700));
  }
}

/// Tables made of a user's polynomials and initial numbers; what is missing counts as 1.
TEST(QuasiRandom, UsersDataMakeTheirTables) {
  const Words none, some = {1, 3, 5}, more = {1, 1, 7, 9, 25, 37};
  const Words old = {uSobolMInit[1][0], uSobolMInit[1][1]};
  const Table first = built_in(BRNG_SOBOL, 1);
  const auto from = [](const std::vector<std::pair<uint32_t, Words>>& rows) {
    Table table;
    for (const auto& [p, initial] : rows) table.push_back(sobol_numbers(p, initial));
    return table;
  };
  const auto niederr = [](const Words& polynomials) {
    Table table;
    for (const uint32_t p : polynomials) table.push_back(niederr_numbers(p));
    return table;
  };
  Words many(319), far(60);
  for (size_t i = 0; i < many.size(); ++i)
    many[i] = static_cast<uint32_t>(2 + random_words() % 9999);
  std::ranges::generate(far, [] { return static_cast<uint32_t>(random_words() | 2); });
  const std::vector<Case> cases = {
      {BRNG_SOBOL, {3, 1, 1, 0x13, 7}, from({{1, none}, {0x13, {1}}, {7, old}})},
      {BRNG_SOBOL, {3, 1, 1, 1, 0xFFFFFFFF}, from({{1, none}, {1, none}, {0xFFFFFFFF, old}})},
      {BRNG_SOBOL, {0, 1, 1, 7}, first},
      {BRNG_SOBOL, {3, 1, 2, 3, 1, 3, 5, 1, 1, 7}, from({{1, none}, {3, some}, {7, {1, 1}}})},
      {BRNG_SOBOL, {3, 1, 2, 0}, from({{1, none}, {3, none}, {7, none}})},
      {BRNG_SOBOL,
       {3, 1, 3, 11, 0x25, 3, 1, 3, 5, 1, 1, 7},
       from({{1, none}, {11, some}, {0x25, {1, 1, 7}}})},
      {BRNG_SOBOL,
       {2, 1, 11, 11, 0x43, 6, 1, 3, 5, 0, 0, 0, 1, 1, 7, 9, 25, 37},
       from({{11, some}, {0x43, more}})},
      {BRNG_SOBOL, joined({60, 1, 11}, {far, {0}}),
       [&] {
         Table table;
         for (const uint32_t p : far) table.push_back(sobol_numbers(p, none));
         return table;
       }()},
      {BRNG_NIEDERR, {4, 1, 1, 0x13, 2, 0xFFFFFFFF, 5}, niederr({0x13, 2, 0xFFFFFFFF, 5})},
      {BRNG_NIEDERR, joined({319, 1, 1}, {many}), niederr(many)},
      {BRNG_NIEDERR, joined({0, 1, 1}, {{11}}), niederr({11})},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << "case " << &c - cases.data());
    const Stream stream(c.brng, Words(c.seeds));
    EXPECT_EQ(draw_words(stream, 900), elements(c.table, 0, 900));
    const uint64_t far_point = 3'000'000'000;
    EXPECT_EQ(__zokSkipAheadStream(stream, far_point * c.table.size()), RNG_OK);
    EXPECT_EQ(draw_words(stream, 90), elements(c.table, 900 + far_point * c.table.size(), 90));
  }
}

// ---- States -------------------------------------------------------------------------------------

uint32_t chunk_size(StreamState* stream) {
  const auto* const chunk = reinterpret_cast<uint32_t*>(static_cast<intptr_t>(stream->Chunks));
  return chunk == nullptr ? 0 : chunk[1];
}

TEST(QuasiRandom, ChunksHoldWhatTheRecordCannot) {
  for (const auto& [brng, dims] : {std::pair{BRNG_SOBOL, 3},
                                   {BRNG_SOBOL, 40},
                                   {BRNG_SOBOL, 41},
                                   {BRNG_NIEDERR, 318},
                                   {BRNG_NIEDERR, 400}}) {
    SCOPED_TRACE(testing::Message() << brng << " " << dims);
    const Case c = of_numbers(brng, dims);
    const bool sobol = brng == BRNG_SOBOL, outside = dims > (sobol ? 40 : 318);
    Stream stream(brng, c.seeds), other(BRNG_MCG31M1);
    ASSERT_EQ(__zokGetNumChunks(stream), sobol || outside);
    EXPECT_EQ(__zokSearchChunk(stream, sobol ? 9 : 10) != nullptr, sobol || outside);
    const int words = sobol ? 65 * dims - 33 * (4 * dims & 31) + 1056 : 33 * dims;
    EXPECT_EQ(chunk_size(stream), sobol || outside ? 4u * words : 0);

    // What goes on without its chunks does so rightly; the rest is refused.
    draw_words(stream, 100);
    __zokDeleteChunks(stream);
    add_chunks(stream, 10);  // wrong sizes
    for (const int32_t status : {int32_t{RNG_BAD_FILE_FORMAT}, int32_t{RNG_NULL_ENTRY}}) {
      uint32_t r[50];
      const int32_t expected = outside ? status : RNG_OK;
      EXPECT_EQ(_zokiRngUniformBits(0, stream, 50, r), expected);
      EXPECT_EQ(__zokSkipAheadStream(stream, 50), expected);
      EXPECT_EQ(__zokLeapfrogStream(stream, dims, coordinate_only),
                outside ? status : RNG_LEAPFROG_UNSUPPORTED);
      __zokDeleteChunks(stream);
    }
    if (outside) continue;
    EXPECT_EQ(draw_words(stream, 99), elements(c.table, 300, 99));
  }
}

TEST(QuasiRandom, DamagedStatesAreRefusedOrHarmless) {
  std::mt19937 random(4);
  for (const auto& [brng, seeds, table] : all_cases()) {
    const auto dims = static_cast<uint32_t>(table.size());
    const Fields fields[] = {{1, 0, -1, 0},     {1, dims, -1, dims},   {1, dims, -2, 0},
                             {1, dims, 700, 0}, {1, dims + 1, -1, 0},  {1, 700, 600, 0},
                             {0, dims, -1, 0},  {~0u, dims, -1, 0},    {1, ~0u, -1, 5},
                             {7, dims, 0, ~0u}, {1, 0x40000001, 0, 0}, {~0u - 90, dims, -1, 0}};
    for (const Fields& f : fields) {
      const Stream stream(brng, seeds);
      fields_of(stream) = f;
      uint32_t r[301];
      r[300] = 77;
      for (int k = 0; k < 12; ++k) {
        const int32_t status =
            _zokiRngUniformBits(0, stream, static_cast<int32_t>(random() % 300), r);
        EXPECT_THAT(status, testing::AnyOf(RNG_OK, RNG_NULL_ENTRY, RNG_BAD_FILE_FORMAT,
                                           RNG_QRNG_EXHAUSTED));
        __zokSkipAheadStream(stream, random() % 100);
        if (k > 8) __zokLeapfrogStream(stream, static_cast<int32_t>(random() % 3), coordinate_only);
      }
      EXPECT_EQ(r[300], 77u);
      const bool bad =
          f.dim == 0 || f.open >= f.dim || f.selected < -1 || f.selected >= int64_t{f.dim};
      if (!bad) continue;
      EXPECT_EQ(_zokiRngUniformBits(0, stream, 1, r), RNG_BAD_FILE_FORMAT);
    }
  }
}

TEST(QuasiRandom, CopiesOfAnyKindGoOnExactly) {
  const std::string name = memory_file();
  for (const auto& [brng, seeds, table] : all_cases()) {
    SCOPED_TRACE(testing::Message() << brng << " " << table.size());
    // Right before the step of the highest bit, inside a point.
    const Stream source(brng, seeds);
    const auto dims = static_cast<int64_t>(table.size());
    const int64_t at = 0x7FFFFFF0 * dims + dims / 2;
    __zokSkipAheadStream(source, at);
    Stream copy, loaded, plain(brng, {2}), same(brng, seeds);
    ASSERT_EQ(__zokCopyStream(&copy, source), RNG_OK);
    ASSERT_EQ(save(source, name), RNG_OK);
    ASSERT_EQ(load(&loaded, name), RNG_OK);
    for (StreamState* const other : {+plain, +same}) {
      ASSERT_EQ(__zokCopyStreamState(other, source), RNG_OK);
    }
    const auto count = static_cast<int32_t>(40 * dims);
    const Words expected = elements(table, at, count);
    for (StreamState* const stream : {+source, +copy, +loaded, +plain, +same}) {
      EXPECT_EQ(draw_words(stream, count), expected);
    }
  }
}

}  // namespace
