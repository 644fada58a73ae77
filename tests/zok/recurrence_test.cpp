// Every generator against its recurrence written out in plain integers, and against what its
// authors published.
#include <fenv.h>
#include <math.h>

#include <fstream>
#include <random>
#include <sstream>

#include "models.hpp"

using namespace orv_test;

namespace {

const Words some_seeds = {20261121, 77, 4294967295, 5, 123456789, 42};

std::vector<Words> elements(StreamState* stream, int32_t n) {
  const Words flat = draw_words(stream, n);
  std::vector<Words> result;
  for (auto at = flat.begin(); at != flat.end(); at += flat.size() / n) {
    result.emplace_back(at, at + flat.size() / n);
  }
  return result;
}

std::vector<Words> elements(Model model, int32_t n) {
  std::vector<Words> result;
  for (int32_t i = 0; i < n; ++i) result.push_back(model.next());
  return result;
}

int32_t init(StreamState* stream, int32_t method, int32_t n, Words params) {
  return properties_of(stream->Brng).InitStream(method, stream, n, params.data());
}

// ---- Requests ----------------------------------------------------------------------------------

enum Flavour { words, doubles, floats };
constexpr Flavour flavours[] = {words, doubles, floats};

struct Request {
  Flavour flavour;
  int32_t n;
};

/// Sizes that straddle what registers of 69, 250 and 624 words and of 156 blocks can give, in every
/// flavour, and others, in random order.
std::vector<Request> mixed_requests(std::mt19937& random) {
  std::vector<Request> all;
  for (const int32_t n :
       {1,   2,   3,   4,   5,   7,   68,  69,  70,  100, 138, 155, 156, 157,  158,  249,  250, 251,
        265, 266, 293, 294, 295, 311, 312, 313, 396, 397, 499, 500, 501, 544,  621,  622,  623, 624,
        625, 626, 627, 628, 700, 749, 750, 751, 780, 781, 900, 901, 999, 1000, 1248, 1249, 5000}) {
    for (const Flavour f : flavours) all.push_back({f, n});
  }
  for (int k = 0; k < 300; ++k) {
    all.push_back(
        {flavours[random() % 3], static_cast<int32_t>(1 + random() % (k % 3 ? 40 : 300))});
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
  switch (request.flavour) {
    case words:
      return drawn<uint32_t>(stream, request.n, row.WordSize / 4, row.iBRng);
    case doubles:
      return drawn<double>(stream, request.n, 1, row.dBRng, from, to);
    default:
      return drawn<float>(stream, request.n, 1, row.sBRng, float_from, float_to);
  }
}

std::vector<double> drawn(Model& model, const Request& request) {
  std::vector<double> r;
  for (int32_t i = 0; i < request.n; ++i) {
    if (request.flavour == words) {
      for (const uint32_t word : model.next()) r.push_back(word);
    } else if (request.flavour == doubles) {
      r.push_back(model.number(from, to, false));
    } else {
      r.push_back(static_cast<float>(model.number(float_from, float_to, true)));
    }
  }
  return r;
}

TEST(Recurrences, AnySplitInAnyFlavourGivesThePlainSequence) {
  std::mt19937 random(1);
  for (const Case& c : cases()) {
    const Stream stream(c.brng, some_seeds);
    Model model = c.model(some_seeds);
    for (const Request& request : mixed_requests(random)) {
      ASSERT_EQ(drawn(stream, request), drawn(model, request)) << c.name << " " << request.n;
    }
  }
}

TEST(Recurrences, CountsBelowOneMakeAnElementInTwoGenerators) {
  for (const Case& c : cases()) {
    const Stream stream(c.brng, some_seeds);
    Model model = c.model(some_seeds);
    for (const int32_t n : {0, -1, -5, INT32_MIN}) {
      for (const Flavour f : flavours) {
        const auto got = drawn(stream, {f, n});
        const bool makes_one = c.brng == BRNG_MCG31M1 || c.brng == BRNG_R250;
        ASSERT_EQ(got,
                  makes_one ? drawn(model, {f, 1}) : std::vector<double>(got.size(), untouched))
            << c.name << " " << n;
        ASSERT_EQ(drawn(stream, {f, 20}), drawn(model, {f, 20})) << c.name << " " << n;
      }
    }
  }
}

TEST(Recurrences, EveryRoundingModeGivesTheSameWords) {
  for (const Case& c : cases()) {
    const auto expected = elements(c.model(some_seeds), 5000);
    for (const int mode : {FE_DOWNWARD, FE_UPWARD, FE_TOWARDZERO}) {
      const Stream stream(c.brng, some_seeds);
      fesetround(mode);
      const auto got = elements(stream, 5000);
      EXPECT_EQ(fegetround(), mode) << c.name;
      fesetround(FE_TONEAREST);
      EXPECT_TRUE(got == expected) << c.name << " mode " << mode;
    }
  }
}

// ---- Registers: what a request leaves, what a damaged file may hold -----------------------------

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
  const struct {
    int32_t brng;
    std::vector<int> fields;
  } rows[] = {{BRNG_R250, {250, 251}}, {BRNG_MT19937, {624}}, {BRNG_SFMT19937, {624, 628, 629}}};
  for (const auto& row : rows) {
    Stream broken(row.brng), fresh(row.brng);
    for (const int field : row.fields) state_words(broken)[field] = 0xFFFFFFFF;
    EXPECT_EQ(draw_doubles(broken, 700), draw_doubles(fresh, 700)) << row.brng;
  }
}

// ---- Seeds, leapfrog, skip ahead ---------------------------------------------------------------

TEST(Recurrences, SeedsOfAnyNumberAreUsedAndRepaired) {
  const uint32_t m1 = 4294967087, m2 = 4294944443, p31 = 2147483647;
  const uint32_t* m = _zok_WH_M[1];
  Words register_of_seeds(250, 0);
  register_of_seeds[249] = 9;
  const std::vector<std::pair<int32_t, Words>> repairs = {
      {BRNG_MCG31M1, {0}},
      {BRNG_MCG31M1, {p31}},
      {BRNG_MCG31M1, {p31 + 1, 5}},
      {BRNG_MCG59, {0}},
      {BRNG_MCG59, {0, 0xF8000000}},
      {BRNG_MCG59, {6, 0xFFFFFFFF, 7}},
      {BRNG_MRG32K3A, {m1, m1, 0, 0, m2, 0}},
      {BRNG_MRG32K3A, {m1 + 5, m1 - 1, 4294967295, m2 + 5, m2 - 1, 4294967295, 3}},
      {BRNG_R250, {0}},
      {BRNG_R250, register_of_seeds},
      {5, {m[0]}},
      {5, {0, m[1], m[2] + 1, 4294967295, 6}},
  };
  for (const Case& c : cases()) {
    std::vector<Words> seeds;
    for (const uint32_t count : {0, 1, 2, 3, 4, 68, 69, 70, 249, 250, 622, 623, 624, 625, 2000}) {
      seeds.emplace_back();
      for (uint32_t i = 0; i < count; ++i) seeds.back().push_back(0xFFFFFFFF - 97 * i);
    }
    for (const auto& [brng, repaired] : repairs) {
      if (brng == c.brng) seeds.push_back(repaired);
    }
    for (const Words& s : seeds) {
      EXPECT_EQ(elements(Stream(c.brng, s), 700), elements(c.model(s), 700))
          << c.name << " " << s.size() << " " << testing::PrintToString(s);
    }
    const Stream stream(c.brng, some_seeds);
    EXPECT_EQ(init(stream, 0, -1, {7}), RNG_OK);
    EXPECT_EQ(elements(stream, 9), elements(c.model({}), 9)) << c.name << " a negative count";
  }
  EXPECT_EQ(draw_doubles(Stream(BRNG_MCG31M1, 0), 1)[0], 4.656612875245797e-10);
}

TEST(Recurrences, LeapfrogPicksAndSkipAheadPasses) {
  for (const Case& c : cases()) {
    SCOPED_TRACE(c.name);
    const auto all = elements(c.model(some_seeds), 20000);
    const Stream stream(c.brng, some_seeds);
    size_t at = 0, step = 1;
    const auto expect = [&](int32_t count) {
      for (const Words& element : elements(stream, count)) {
        ASSERT_EQ(element, all[at]) << at;
        at += step;
      }
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
    EXPECT_EQ(elements(far, 3), elements(steps, 3));
  }
}

// ---- Published values, and the law -------------------------------------------------------------

/// The numbers of the block in known_answers.txt whose title starts with `title`.
Words known_answers(const std::string& title) {
  Words words;
  std::ifstream file(ORV_KNOWN_ANSWERS);
  bool inside = false;
  for (std::string line; std::getline(file, line);) {
    if (line[0] == '[') inside = line.compare(1, title.size(), title) == 0;
    std::istringstream numbers(line);
    for (uint32_t word; inside && numbers >> word;) words.push_back(word);
  }
  return words;
}

TEST(Recurrences, PublishedOutputs) {
  const Words mt_seeds = {0x123, 0x234, 0x345, 0x456};
  const struct {
    int32_t brng;
    Words seeds;
    const char* title;
    size_t first, count;
  } blocks[] = {
      {BRNG_MRG32K3A, Words(6, 12345), "mrg32k3a seed words 12345 x 6, integers 1", 0, 10},
      {BRNG_MRG32K3A, Words(6, 12345), "mrg32k3a same stream, integer 100]", 99, 1},
      {BRNG_MRG32K3A, Words(6, 12345), "mrg32k3a same stream, integer 1000]", 999, 1},
      {BRNG_MT19937, mt_seeds, "mt19937 seed words 0x123", 0, 20},
      {BRNG_MT19937, mt_seeds, "mt19937 same stream, words 996", 995, 5},
      {BRNG_SFMT19937, {0x1234, 0x5678, 0x9abc, 0xdef0}, "sfmt19937 seed words 0x1234", 0, 20},
  };
  for (const auto& b : blocks) {
    const Words drawn = draw_words(Stream(b.brng, b.seeds), 1000);
    EXPECT_EQ(Words(&drawn[b.first], &drawn[b.first] + b.count), known_answers(b.title)) << b.title;
  }
}

/// Fixed seeds. Each figure is a standard normal one when the numbers are uniform and independent.
TEST(Recurrences, NumbersAreUniformAndUncorrelated) {
  constexpr int n = 1 << 20, cells = 1024;
  for (const Case& c : cases()) {
    const std::vector<double> u = draw_doubles(Stream(c.brng, some_seeds), n);
    std::vector<double> singles(cells), pairs(cells);
    for (int i = 0; i < n; ++i) {
      ASSERT_TRUE(u[i] >= 0 && u[i] < 1);
      ++singles[static_cast<int>(u[i] * cells)];
      if (i % 2 == 0) ++pairs[static_cast<int>(u[i] * 32) * 32 + static_cast<int>(u[i + 1] * 32)];
    }
    for (const auto& [counts, expected] :
         {std::pair(singles, 1.0 * n / cells), std::pair(pairs, 0.5 * n / cells)}) {
      double chi_square = 0;
      for (const double k : counts) chi_square += (k - expected) * (k - expected) / expected;
      EXPECT_LT(fabs(chi_square - (cells - 1)) / sqrt(2.0 * (cells - 1)), 4) << c.name;
    }
  }
}

}  // namespace
