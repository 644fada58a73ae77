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

std::vector<Words> elements(Model& model, int32_t n) {
  std::vector<Words> result;
  for (int32_t i = 0; i < n; ++i) result.push_back(model.next());
  return result;
}

int32_t init(StreamState* stream, int32_t method, int32_t n, Words params) {
  return properties_of(stream->Brng).InitStream(method, stream, n, params.data());
}

// ---- Requests ----------------------------------------------------------------------------------

enum class Flavour { words, doubles, floats };
constexpr Flavour flavours[] = {Flavour::words, Flavour::doubles, Flavour::floats};

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

/// n numbers of an array between two that must not be touched.
template <class T, class Draw, class Next>
void expect_numbers(size_t n, const Draw& draw, Next next) {
  std::vector<T> r(n + 2, T(0xA5A5));
  ASSERT_EQ(draw(r.data() + 1), RNG_OK);
  ASSERT_EQ(r.front(), T(0xA5A5)) << n;
  ASSERT_EQ(r.back(), T(0xA5A5)) << n;
  for (size_t i = 1; i <= n; ++i) ASSERT_EQ(r[i], static_cast<T>(next())) << i << " of " << n;
}

void expect_request(StreamState* stream, Model& model, const Request& request) {
  constexpr double a = -1.25, b = 7.3;
  constexpr float af = 0.1f, bf = 0.7f;
  const BrngProperties row = properties_of(stream->Brng);
  const int32_t n = request.n;
  switch (request.flavour) {
    case Flavour::words: {
      Words element;
      const auto next_word = [&, k = size_t{0}]() mutable {
        if (k == element.size()) element = model.next(), k = 0;
        return element[k++];
      };
      return expect_numbers<uint32_t>(
          static_cast<size_t>(n) * row.WordSize / sizeof(uint32_t),
          [&](uint32_t* r) { return row.iBRng(stream, n, r); }, next_word);
    }
    case Flavour::doubles:
      return expect_numbers<double>(
          n, [&](double* r) { return row.dBRng(stream, n, r, a, b); },
          [&] { return model.number(a, b); });
    case Flavour::floats:
      return expect_numbers<float>(
          n, [&](float* r) { return row.sBRng(stream, n, r, af, bf); },
          [&] { return model.number_for_float(af, bf); });
  }
}

TEST(Recurrences, AnySplitInAnyFlavourGivesThePlainSequence) {
  std::mt19937 random(1);
  for (const Case& c : cases()) {
    SCOPED_TRACE(c.name);
    const Stream stream(c.brng, some_seeds);
    const auto model = c.model(some_seeds);
    for (const Request& request : mixed_requests(random)) {
      expect_request(stream, *model, request);
      if (HasFatalFailure()) return;
    }
  }
}

TEST(Recurrences, ZeroCountMakesOneElementInTwoGenerators) {
  for (const Case& c : cases()) {
    SCOPED_TRACE(c.name);
    const bool makes_one = c.brng == BRNG_MCG31M1 || c.brng == BRNG_R250;
    const Stream stream(c.brng, some_seeds);
    const BrngProperties row = properties_of(c.brng);
    const auto model = c.model(some_seeds);
    uint32_t word = 77;
    double d = -77;
    float s = -77;
    EXPECT_EQ(row.iBRng(stream, 0, &word), 0);
    EXPECT_EQ(row.dBRng(stream, 0, &d, 0, 1), 0);
    EXPECT_EQ(row.sBRng(stream, 0, &s, 0, 1), 0);
    EXPECT_EQ(word, makes_one ? model->next()[0] : 77);
    EXPECT_EQ(d, makes_one ? model->number(0, 1) : -77);
    EXPECT_EQ(s, static_cast<float>(makes_one ? model->number(0, 1) : -77));
    EXPECT_EQ(elements(stream, 20), elements(*model, 20));
  }
}

TEST(Recurrences, EveryRoundingModeGivesTheSameWords) {
  for (const Case& c : cases()) {
    const auto expected = elements(*c.model(some_seeds), 5000);
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
  const auto words = Flavour::words, doubles = Flavour::doubles, floats = Flavour::floats;
  struct Row {
    int32_t brng;
    std::vector<Request> requests;
    Words fields;  // the index; of SFMT19937 also the next spare word's place and their number
  };
  const Row rows[] = {
      {BRNG_MT19937, {}, {624}},
      {BRNG_MT19937, {{floats, 624}}, {624}},
      {BRNG_MT19937, {{words, 624}, {doubles, 1}}, {1}},
      {BRNG_MT19937, {{words, 625}}, {624}},
      {BRNG_MT19937, {{words, 600}, {words, 25}}, {1}},
      {BRNG_MT19937, {{words, 100}, {doubles, 700}}, {624}},
      {BRNG_MT2203, {{words, 70}}, {69}},
      {BRNG_MT2203, {{words, 60}, {words, 10}}, {1}},
      {BRNG_SFMT19937, {}, {624, 0, 0}},
      {BRNG_SFMT19937, {{doubles, 1}, {doubles, 3}}, {4, 3, 3}},
      {BRNG_SFMT19937, {{doubles, 1}, {floats, 2}}, {4, 2, 3}},
      {BRNG_SFMT19937, {{doubles, 1}, {words, 156}, {floats, 4}}, {8, 0, 3}},
      {BRNG_SFMT19937, {{floats, 2}, {floats, 3}}, {8, 0, 3}},
      {BRNG_SFMT19937, {{doubles, 624}}, {624, 0, 0}},
      {BRNG_SFMT19937, {{doubles, 625}}, {624, 0, 3}},
      {BRNG_SFMT19937, {{doubles, 621}, {doubles, 4}}, {4, 0, 3}},
      {BRNG_SFMT19937, {{floats, 626}, {doubles, 2}}, {624, 2, 2}},
      {BRNG_SFMT19937, {{words, 157}}, {624, 0, 0}},
      {BRNG_SFMT19937, {{words, 150}, {words, 7}}, {4, 0, 0}},
  };
  for (const Row& row : rows) {
    Stream stream(row.brng);
    const BrngProperties p = properties_of(row.brng);
    for (const auto& [flavour, n] : row.requests) {
      std::vector<double> r(2 * n);
      if (flavour == words) p.iBRng(stream, n, reinterpret_cast<uint32_t*>(r.data()));
      if (flavour == doubles) p.dBRng(stream, n, r.data(), 0, 1);
      if (flavour == floats) p.sBRng(stream, n, reinterpret_cast<float*>(r.data()), 0, 1);
    }
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
      EXPECT_EQ(elements(Stream(c.brng, s), 700), elements(*c.model(s), 700))
          << c.name << " " << s.size() << " " << testing::PrintToString(s);
    }
    const Stream stream(c.brng, some_seeds);
    EXPECT_EQ(init(stream, 0, -1, {7}), RNG_OK);
    EXPECT_EQ(elements(stream, 9), elements(*c.model({}), 9)) << c.name << " a negative count";
  }
  EXPECT_EQ(draw_doubles(Stream(BRNG_MCG31M1, 0), 1)[0], 4.656612875245797e-10);
}

TEST(Recurrences, LeapfrogPicksAndSkipAheadPasses) {
  for (const Case& c : cases()) {
    SCOPED_TRACE(c.name);
    const auto all = elements(*c.model(some_seeds), 100000);
    Stream leaping(c.brng, some_seeds), skipping(c.brng, some_seeds);
    const auto expect = [&](StreamState* stream, int count, int first, int step) {
      const auto got = elements(stream, count);
      for (int i = 0; i < count; ++i) ASSERT_EQ(got[i], all[first + step * i]) << i;
    };
    if (c.leapfrogs) {
      EXPECT_EQ(init(leaping, 1, 7, {4}), RNG_OK);
      expect(leaping, 40, 4, 7);
      // The third of five streams of what is left, then 11 of its elements passed over.
      EXPECT_EQ(init(leaping, 1, 5, {3}), RNG_OK);
      expect(leaping, 20, 4 + 7 * (40 + 3), 35);
      EXPECT_EQ(init(leaping, 2, 2, {11, 0}), RNG_OK);
      expect(leaping, 20, 4 + 7 * (40 + 3 + 5 * 31), 35);
    } else {
      EXPECT_EQ(init(leaping, 1, 3, {1}), RNG_LEAPFROG_UNSUPPORTED);
      expect(leaping, 5, 0, 1);
    }
    for (const int32_t method : {-1, 3}) {
      EXPECT_EQ(init(skipping, method, 2, {1, 0}), RNG_BAD_METHOD);
    }
    EXPECT_EQ(init(skipping, 2, 2, {0, 0}), c.skips ? RNG_OK : RNG_SKIPAHEAD_UNSUPPORTED);
    expect(skipping, 5, 0, 1);
    if (!c.skips) continue;
    EXPECT_EQ(init(skipping, 2, 2, {98765, 0}), RNG_OK);
    expect(skipping, 2, 98770, 1);
    // Far skips add up: 2^32 is 65536 times 65536.
    Stream far(c.brng, some_seeds), steps(c.brng, some_seeds);
    EXPECT_EQ(init(far, 2, 2, {0, 1}), RNG_OK);
    for (int i = 0; i < 65536; ++i) init(steps, 2, 2, {65536, 0});
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
  const struct {
    int32_t brng;
    Words seeds;
    const char* title;
    size_t first, count;       // words that stand in the block one after the other
    std::vector<size_t> more;  // and those after them
  } blocks[] = {
      {BRNG_MRG32K3A, Words(6, 12345), "mrg32k3a", 0, 10, {99, 999}},
      {BRNG_MT19937, {0x123, 0x234, 0x345, 0x456}, "mt19937 seed words 0x123", 0, 20, {}},
      {BRNG_MT19937, {0x123, 0x234, 0x345, 0x456}, "mt19937 same stream, words 996", 995, 5, {}},
      {BRNG_SFMT19937, {0x1234, 0x5678, 0x9abc, 0xdef0}, "sfmt19937 seed words 0x1234", 0, 20, {}},
  };
  for (const auto& b : blocks) {
    const Words drawn = draw_words(Stream(b.brng, b.seeds), 1000);
    Words words(&drawn[b.first], &drawn[b.first] + b.count);
    for (const size_t place : b.more) words.push_back(drawn[place]);
    EXPECT_EQ(words, known_answers(b.title)) << b.title;
  }
}

/// Fixed seeds. Each figure is a standard normal one when the numbers are uniform and independent.
TEST(Recurrences, NumbersAreUniformAndUncorrelated) {
  constexpr int n = 1 << 20, cells = 1024;
  for (const Case& c : cases()) {
    const std::vector<double> u = draw_doubles(Stream(c.brng, some_seeds), n);
    std::vector<double> count(cells), pairs(cells);
    double product = 0;
    for (int i = 0; i < n; ++i) {
      ASSERT_TRUE(u[i] >= 0 && u[i] < 1);
      ++count[static_cast<int>(u[i] * cells)];
      const double next = u[(i + 1) % n];
      product += (u[i] - 0.5) * (next - 0.5);
      if (i % 2 == 0) ++pairs[static_cast<int>(u[i] * 32) * 32 + static_cast<int>(next * 32)];
    }
    const auto chi_square = [](const std::vector<double>& counts, double expected) {
      double sum = 0;
      for (const double k : counts) sum += (k - expected) * (k - expected) / expected;
      return (sum - (cells - 1)) / sqrt(2.0 * (cells - 1));
    };
    EXPECT_LT(fabs(chi_square(count, 1.0 * n / cells)), 4) << c.name;
    EXPECT_LT(fabs(chi_square(pairs, 0.5 * n / cells)), 4) << c.name;
    EXPECT_LT(fabs(product * 12 / sqrt(1.0 * n)), 4) << c.name;
  }
}

}  // namespace
