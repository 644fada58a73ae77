// SPDX-License-Identifier: MIT
// Every generator against its recurrence written out in plain integers, and against what its
// authors published.
#include <fenv.h>
#include <math.h>

#include "models.hpp"

using namespace orv_test;

namespace {

const Words some_seeds = {20261121, 77, 4294967295, 5, 123456789, 42};

int32_t init(StreamState* stream, int32_t method, int32_t n, Words params) {
  return properties_of(stream->Brng).InitStream(method, stream, n, params.data());
}

enum Flavour { words, doubles, floats };

struct Request {
  Flavour flavour;
  int32_t n;
};

/// Sizes below 1, those that straddle what registers of 69, 250 and 624 words and of 156 blocks can
/// give, in every flavour, and others, in random order.
std::vector<Request> mixed_requests(std::mt19937& random) {
  std::vector<Request> all;
  for (const int32_t n :
       {0,   -1,  -5,  INT32_MIN, 1,   2,   3,   4,   5,    7,    68,   69,  70,  100, 138,
        155, 156, 157, 158,       249, 250, 251, 265, 266,  293,  294,  295, 311, 312, 313,
        396, 397, 499, 500,       501, 544, 621, 622, 623,  624,  625,  626, 627, 628, 700,
        749, 750, 751, 780,       781, 900, 901, 999, 1000, 1248, 1249, 5000}) {
    for (const Flavour f : {words, doubles, floats}) all.push_back({f, n});
  }
  for (int k = 0; k < 300; ++k) {
    all.push_back({Flavour(random() % 3), 1 + static_cast<int32_t>(random() % (k % 3 ? 40 : 300))});
  }
  std::shuffle(all.begin(), all.end(), random);
  return all;
}

constexpr double from = -1.25, to = 7.3;
constexpr float float_from = 0.1f, float_to = 0.7f;
constexpr int untouched = 0xA5A5;

/// Room for an element at least, between two places that must not be touched.
template <class T, class Entry, class... Range>
std::vector<double> drawn(StreamState* stream, int32_t n, int width, Entry entry, Range... range) {
  std::vector<T> r(std::max(n, 1) * width + 2, T(untouched));
  EXPECT_EQ(entry(stream, n, r.data() + 1, range...), RNG_OK);
  EXPECT_TRUE(r.front() == untouched && r.back() == untouched) << n;
  return {r.begin() + 1, r.end() - 1};
}

std::vector<double> drawn(StreamState* stream, const Request& request) {
  const BrngProperties row = properties_of(stream->Brng);
  const auto& [flavour, n] = request;
  if (flavour == words) return drawn<uint32_t>(stream, n, row.WordSize / 4, row.iBRng);
  if (flavour == doubles) return drawn<double>(stream, n, 1, row.dBRng, from, to);
  return drawn<float>(stream, n, 1, row.sBRng, float_from, float_to);
}

std::vector<double> drawn(Model& model, const Request& request) {
  std::vector<double> r;
  for (int32_t i = 0; i < request.n; ++i) {
    if (request.flavour == words) std::ranges::copy(model.next(), std::back_inserter(r));
    if (request.flavour == doubles) r.push_back(model.number(from, to, false));
    if (request.flavour == floats) r.push_back(float(model.number(float_from, float_to, true)));
  }
  return r;
}

TEST(Recurrences, AnySplitInAnyFlavourGivesThePlainSequence) {
  std::mt19937 random(1);
  for (const Case& c : cases) {
    const Stream stream(c.brng, some_seeds);
    Model model = c.model(some_seeds);
    for (const auto& [flavour, n] : mixed_requests(random)) {
      SCOPED_TRACE(testing::Message() << c.brng << " " << n);
      // Words are the same in every rounding mode.
      constexpr int modes[] = {FE_TONEAREST, FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO};
      const int mode = modes[flavour == words ? random() % 4 : 0];
      fesetround(mode);
      const auto got = drawn(stream, {flavour, n});
      EXPECT_EQ(fegetround(), mode);
      fesetround(FE_TONEAREST);
      // Below 1 these two make an element.
      const bool none = n < 1 && c.brng != BRNG_MCG31M1 && c.brng != BRNG_R250;
      ASSERT_EQ(got, none ? std::vector<double>(got.size(), untouched)
                          : drawn(model, {flavour, std::max(n, 1)}));
    }
  }
}

uint32_t* state_words(StreamState* stream) { return reinterpret_cast<uint32_t*>(stream + 1); }

TEST(Registers, FieldsAfterRequests) {
  const struct {
    int32_t brng;
    std::vector<Request> requests;
    Words fields;  // the index; of SFMT19937 also the next spare word's place and their number
  } rows[] = {
      {BRNG_MT19937, {{words, 624}, {doubles, 1}}, {1}},
      {BRNG_MT19937, {{words, 100}, {doubles, 700}}, {624}},
      {BRNG_MT2203, {{words, 60}, {floats, 10}}, {1}},
      {BRNG_SFMT19937, {{doubles, 1}, {words, 156}, {floats, 2}}, {4, 2, 3}},
      {BRNG_SFMT19937, {{doubles, 1}, {words, 156}, {floats, 4}}, {8, 0, 3}},
      {BRNG_SFMT19937, {{floats, 626}, {doubles, 2}}, {624, 2, 2}},
      {BRNG_SFMT19937, {{words, 150}, {words, 7}}, {4, 0, 0}},
  };
  for (const auto& row : rows) {
    Stream stream(row.brng);
    for (const Request& request : row.requests) drawn(stream, request);
    const uint32_t* const f = state_words(stream) + (row.brng == BRNG_MT2203 ? 69 : 624);
    const Words fields = row.fields.size() == 1 ? Words{f[0]} : Words{f[0], f[4], f[5]};
    EXPECT_EQ(fields, row.fields) << "row " << &row - rows;
  }
}

TEST(Registers, FieldsOutOfRangeAreHarmless) {
  const std::vector<std::pair<int32_t, Words>> rows = {
      {BRNG_R250, {250, 251}}, {BRNG_MT19937, {624}}, {BRNG_SFMT19937, {624, 628, 629}}};
  for (const auto& [brng, fields] : rows) {
    Stream broken(brng), fresh(brng);
    for (const uint32_t field : fields) state_words(broken)[field] = 0xFFFFFFFF;
    EXPECT_EQ(draw<double>(broken, 700), draw<double>(fresh, 700)) << brng;
  }
}

TEST(Recurrences, SeedsOfAnyNumberAreUsedAndRepaired) {
  const uint32_t m1 = 4294967087, m2 = 4294944443, p31 = 2147483647;
  const uint32_t* m = _zok_WH_M[1];
  Words register_of_seeds(250, 0);
  register_of_seeds[249] = 9;
  std::vector<std::pair<int32_t, Words>> seeds = {
      {-1, {0}},
      {BRNG_MCG31M1, {p31}},
      {BRNG_MCG31M1, {p31 + 1, 5}},
      {BRNG_MCG59, {0, 0xF8000000}},
      {BRNG_MCG59, {6, 0xFFFFFFFF, 7}},
      {BRNG_MRG32K3A, {m1, m1, 0, 0, m2, 0}},
      {BRNG_MRG32K3A, {m1 + 5, m1 - 1, 4294967295, m2 + 5, m2 - 1, 4294967295, 3}},
      {BRNG_R250, register_of_seeds},
      {5, {m[0]}},
      {5, {0, m[1], m[2] + 1, 4294967295, 6}},
  };
  for (const uint32_t count : {0, 1, 2, 3, 4, 68, 69, 70, 249, 250, 622, 623, 624, 625, 2000}) {
    Words& for_all = seeds.emplace_back(-1, Words{}).second;
    for (uint32_t i = 0; i < count; ++i) for_all.push_back(0xFFFFFFFF - 97 * i);
  }
  for (const Case& c : cases) {
    for (const auto& [brng, s] : seeds) {
      if (brng != -1 && brng != c.brng) continue;
      Model model = c.model(s);
      EXPECT_EQ(drawn(Stream(c.brng, s), {words, 700}), drawn(model, {words, 700})) << c.brng;
    }
    const Stream stream(c.brng, some_seeds);
    EXPECT_EQ(init(stream, 0, -1, {7}), RNG_OK);
    EXPECT_EQ(draw_words(stream, 9), draw_words(Stream(c.brng, Words{}), 9)) << c.brng;
  }
}

TEST(Recurrences, LeapfrogPicksAndSkipAheadPasses) {
  for (const Case& c : cases) {
    SCOPED_TRACE(c.brng);
    std::vector<Words> all(20000);
    std::ranges::generate(all, c.model(some_seeds).next);
    const Stream stream(c.brng, some_seeds);
    size_t at = 0, step = 1;
    const auto expect = [&](int32_t count) {
      Words expected;
      for (int32_t i = 0; i < count; ++i, at += step) {
        expected.insert(expected.end(), all[at].begin(), all[at].end());
      }
      ASSERT_EQ(draw_words(stream, count), expected) << at;
    };
    const auto leap = [&](int32_t k, int32_t n) {
      EXPECT_EQ(__zokLeapfrogStream(stream, k, n), c.leapfrogs ? RNG_OK : RNG_LEAPFROG_UNSUPPORTED);
      if (c.leapfrogs) at += k * step, step *= n;
      expect(20);
    };
    const auto skip = [&](int64_t n) {
      EXPECT_EQ(__zokSkipAheadStream(stream, n), c.skips ? RNG_OK : RNG_SKIPAHEAD_UNSUPPORTED);
      if (c.skips) at += n * step;
      expect(5);
    };
    for (const int32_t method : {-1, 3}) EXPECT_EQ(init(stream, method, 2, {1, 0}), RNG_BAD_METHOD);
    EXPECT_EQ(__zokLeapfrogStream(stream, 1, -1), RNG_BAD_NSTREAMS);
    skip(0);
    skip(9876);
    leap(4, 7);
    leap(3, 5);  // of what is left
    skip(11);    // of its own elements
    if (!c.skips) continue;
    // Far skips add up: 2^32 is 65536 times 65536.
    const Stream far(c.brng, some_seeds), steps(c.brng, some_seeds);
    __zokSkipAheadStream(far, 1ll << 32);
    for (int i = 0; i < 65536; ++i) __zokSkipAheadStream(steps, 65536);
    EXPECT_EQ(draw_words(far, 3), draw_words(steps, 3));
  }
}

/// From the output files of Matsumoto and Nishimura (2002) and of Saito and Matsumoto (2006), and
/// from L'Ecuyer's values (1999).
TEST(Recurrences, PublishedOutputs) {
  const auto drawn = [](int32_t brng, const Words& seeds, size_t first, size_t count) {
    const Words all = draw_words(Stream(brng, seeds), 1000);
    return Words(&all[first - 1], &all[first - 1] + count);
  };
  const Words twelve(6, 12345), mt = {0x123, 0x234, 0x345, 0x456};
  EXPECT_EQ(drawn(BRNG_MRG32K3A, twelve, 1, 10),
            (Words{545508589, 1368065410, 1327943761, 3546985096, 951893194, 2290915636, 2064909380,
                   1527117980, 584065747, 3246360482}));
  EXPECT_EQ(drawn(BRNG_MRG32K3A, twelve, 1000, 1), Words{4235174647});
  EXPECT_EQ(
      drawn(BRNG_MT19937, mt, 1, 20),
      (Words{1067595299, 955945823,  477289528,  4107218783, 4228976476, 3344332714, 3355579695,
             227628506,  810200273,  2591290167, 2560260675, 3242736208, 646746669,  1479517882,
             4245472273, 1143372638, 3863670494, 3221021970, 1773610557, 1138697238}));
  EXPECT_EQ(drawn(BRNG_MT19937, mt, 996, 5),
            (Words{2643151863, 3896204135, 2416995901, 1397735321, 3460025646}));
  EXPECT_EQ(
      drawn(BRNG_SFMT19937, {0x1234, 0x5678, 0x9abc, 0xdef0}, 1, 20),
      (Words{2920711183, 3885745737, 3501893680, 856470934,  1421864068, 277361036,  1518638004,
             2328404353, 3355513634, 64329189,   1624587673, 3508467182, 2481792141, 3706480799,
             1925859037, 2913275699, 882658412,  384641219,  422202002,  1873384891}));
}

}  // namespace
