// MCG31M1, MCG59, MRG32K3A, R250 and WH against recurrences written out in plain integers.
#include <math.h>

#include <functional>
#include <memory>
#include <random>

#include "known_answers.hpp"
#include "stream_support.hpp"

using namespace orv_test;

namespace {

using Words = std::vector<uint32_t>;

// ---- Models: the recurrences as they are defined -----------------------------------------------

/// One element of a stream and the double (before scaling) or scaled number made of it.
struct Model {
  virtual ~Model() = default;
  virtual Words next() = 0;
  virtual double number(const Words& element, double a, double b) const = 0;
  virtual double number_for_float(const Words& element, double a, double b) const {
    return number(element, a, b);
  }
};

double scale(double w, double a, double b, double c) {
  const volatile double s = (b - a) * c;
  const volatile double product = w * s;
  return a + product;
}

struct MCG31M1 : Model {
  explicit MCG31M1(const Words& seeds) : x(seeds.empty() ? 1 : seeds[0] % 2147483647) {
    if (x == 0) x = 1;
  }
  Words next() override {
    const Words element = {static_cast<uint32_t>(x)};
    x = 1132489760 * x % 2147483647;
    return element;
  }
  double number(const Words& w, double a, double b) const override {
    return scale(w[0], a, b, 4.656612875245797e-10);
  }
  uint64_t x;
};

struct MCG59 : Model {
  explicit MCG59(const Words& seeds) : x(seeds.empty() ? 1 : seeds[0]) {
    if (seeds.size() > 1) x += uint64_t{seeds[1] % (1u << 27)} << 32;
    if (x == 0) x = 1;
  }
  Words next() override {
    const Words element = {static_cast<uint32_t>(x), static_cast<uint32_t>(x >> 32)};
    x = times(302875106592253, x);
    return element;
  }
  /// By shifts and additions; 32-bit programs have no wider product.
  static uint64_t times(uint64_t a, uint64_t x) {
    uint64_t sum = 0;
    for (; a != 0; a >>= 1, x = 2 * x % modulus) {
      if (a % 2 != 0) sum = (sum + x) % modulus;
    }
    return sum;
  }
  double number(const Words& w, double a, double b) const override {
    const volatile double s = (b - a) * 1.734723475976807e-18;
    const volatile double low = w[0] * s, high = w[1] * 4294967296.0 * s;
    const volatile double sum = low + high;
    return sum + a;
  }
  double number_for_float(const Words& w, double a, double b) const override {
    const volatile double sum = w[0] + w[1] * 4294967296.0;
    return scale(sum, a, b, 1.734723475976807e-18);
  }
  static constexpr uint64_t modulus = 1ull << 59;
  uint64_t x;
};

struct MRG32K3A : Model {
  explicit MRG32K3A(const Words& seeds) {
    for (size_t k = 0; k < 6; ++k) s[k] = (k < seeds.size() ? seeds[k] : 1) % (k < 3 ? m1 : m2);
    if (s[0] + s[1] + s[2] == 0) s[0] = 1;
    if (s[3] + s[4] + s[5] == 0) s[3] = 1;
  }
  Words next() override {
    const int64_t x = ((1403580 * s[1] - 810728 * s[0]) % m1 + m1) % m1;
    const int64_t y = ((527612 * s[5] - 1370589 * s[3]) % m2 + m2) % m2;
    s[0] = s[1], s[1] = s[2], s[2] = x;
    s[3] = s[4], s[4] = s[5], s[5] = y;
    return {static_cast<uint32_t>((x - y + m1) % m1)};
  }
  double number(const Words& w, double a, double b) const override {
    return scale(w[0], a, b, 2.328306549837829e-10);
  }
  static constexpr int64_t m1 = 4294967087, m2 = 4294944443;
  int64_t s[6];
};

struct R250 : Model {
  explicit R250(const Words& seeds) : w(seeds) {
    if (w.size() >= 250) {
      w.resize(250);
      return;
    }
    uint32_t v = seeds.empty() || seeds[0] == 0 ? 1 : seeds[0];
    w.clear();
    for (int i = 0; i < 250; ++i) w.push_back(v *= 69069);
    for (uint32_t k = 0; k < 32; ++k) {
      w[3 + 7 * k] &= static_cast<uint32_t>((1ull << (32 - k)) - 1);
      w[3 + 7 * k] |= 1u << (31 - k);
    }
  }
  Words next() override {
    w.push_back(w[w.size() - 250] ^ w[w.size() - 147]);
    return {w.back()};
  }
  double number(const Words& element, double a, double b) const override {
    return scale(element[0], a, b, 2.3283064365386963e-10);
  }
  Words w;
};

struct WH : Model {
  explicit WH(const Words& seeds, int32_t generator) : offset(generator) {
    for (size_t k = 0; k < 4; ++k) {
      x[k] = (k < seeds.size() ? seeds[k] : 1) % _zok_WH_M[offset][k];
      if (x[k] == 0) x[k] = 1;
    }
  }
  Words next() override {
    const Words element(x, x + 4);
    for (int k = 0; k < 4; ++k) x[k] = x[k] * _zok_WH_A[offset][k] % _zok_WH_M[offset][k];
    return element;
  }
  double number(const Words& w, double a, double b) const override {
    volatile double sum = 0;
    for (int k = 0; k < 4; ++k) {
      const volatile double term = w[k] * (1.0 / _zok_WH_M[offset][k]);
      sum = k == 0 ? term : sum + term;
    }
    const volatile double u = sum - floor(sum);
    const volatile double product = u * (b - a);
    return product + a;
  }
  int32_t offset;
  uint32_t x[4];
};

// ---- The generators under test -----------------------------------------------------------------

struct Case {
  const char* name;
  int32_t brng;
  bool leapfrogs, skips;
  std::function<std::unique_ptr<Model>(const Words&)> model;
};

template <class M, class... More>
auto make(More... more) {
  return [=](const Words& seeds) -> std::unique_ptr<Model> {
    return std::make_unique<M>(seeds, more...);
  };
}

const std::vector<Case>& cases() {
  static const std::vector<Case> all = {
      {"MCG31M1", BRNG_MCG31M1, true, true, make<MCG31M1>()},
      {"MCG59", BRNG_MCG59, true, true, make<MCG59>()},
      {"MRG32K3A", BRNG_MRG32K3A, false, true, make<MRG32K3A>()},
      {"R250", BRNG_R250, false, false, make<R250>()},
      {"WH 0", BRNG_WH, true, true, make<WH>(0)},
      {"WH 272", BRNG_WH + 272, true, true, make<WH>(272)},
      {"WH 1, low identifier", 5, true, true, make<WH>(1)},
  };
  return all;
}

struct Seeded : Stream {
  Seeded(int32_t brng, const Words& seeds) {
    EXPECT_EQ(__zokNewStreamEx(&*this, brng, static_cast<int32_t>(seeds.size()), seeds.data()), 0);
  }
};

std::vector<Words> elements(StreamState* stream, int32_t n) {
  const BrngProperties& row = properties_of(stream->Brng);
  const size_t width = row.WordSize / 4;
  Words flat = rubbish(n * width);
  EXPECT_EQ(row.iBRng(stream, n, flat.data()), RNG_OK);
  std::vector<Words> result;
  for (int32_t i = 0; i < n; ++i) {
    result.emplace_back(flat.begin() + i * width, flat.begin() + (i + 1) * width);
  }
  return result;
}

std::vector<Words> elements(Model& model, int32_t n) {
  std::vector<Words> result;
  for (int32_t i = 0; i < n; ++i) result.push_back(model.next());
  return result;
}

const Words some_seeds = {20261121, 77, 4294967295, 5, 123456789, 42};

int32_t init(StreamState* stream, int32_t method, int32_t n, Words params) {
  return properties_of(stream->Brng).InitStream(method, stream, n, params.data());
}

TEST(Congruential, AnySplitInAnyFlavourIsThePlainRecurrence) {
  std::mt19937 random(1);
  const double a = -1.25, b = 7.3;
  const float af = 0.1f, bf = 0.7f;
  for (const Case& c : cases()) {
    SCOPED_TRACE(c.name);
    const Seeded stream(c.brng, some_seeds);
    const BrngProperties row = properties_of(c.brng);
    const auto model = c.model(some_seeds);
    const size_t width = row.WordSize / 4;
    for (int request = 0; request < 400; ++request) {
      const int32_t longest = request % 50 == 0 ? 2100 : request % 3 == 0 ? 300 : 40;
      const auto n = static_cast<int32_t>(1 + random() % longest);
      // One more element than asked for, which must not be touched.
      Words words = rubbish((n + 1) * width);
      std::vector<double> doubles(n + 1, -77);
      std::vector<float> floats(n + 1, -77);
      const int flavour = static_cast<int>(random() % 3);
      if (flavour == 0) {
        EXPECT_EQ(row.iBRng(stream, n, words.data()), 0);
      }
      if (flavour == 1) {
        EXPECT_EQ(row.dBRng(stream, n, doubles.data(), a, b), 0);
      }
      if (flavour == 2) {
        EXPECT_EQ(row.sBRng(stream, n, floats.data(), af, bf), 0);
      }
      for (int32_t i = 0; i < n; ++i) {
        const Words e = model->next();
        const Words got(words.begin() + i * width, words.begin() + (i + 1) * width);
        if (flavour == 0) {
          ASSERT_EQ(got, e) << n << " at " << i;
        }
        if (flavour == 1) {
          ASSERT_EQ(doubles[i], model->number(e, a, b)) << n << " at " << i;
        }
        if (flavour == 2) {
          ASSERT_EQ(floats[i], static_cast<float>(model->number_for_float(e, af, bf))) << i;
        }
      }
      ASSERT_EQ(Words(words.end() - width, words.end()), rubbish(width)) << n;
      ASSERT_EQ(doubles[n], -77);
      ASSERT_EQ(floats[n], -77);
    }
  }
}

TEST(Congruential, SeedsAreRepaired) {
  const uint32_t m1 = 4294967087, m2 = 4294944443, p31 = 2147483647;
  const uint32_t* m = _zok_WH_M[1];
  Words register_of_seeds(250, 0);
  register_of_seeds[249] = 9;
  struct Repair {
    int32_t brng;
    Words seeds;
  };
  const Repair repairs[] = {
      {BRNG_MCG31M1, {}},
      {BRNG_MCG31M1, {0}},
      {BRNG_MCG31M1, {p31}},
      {BRNG_MCG31M1, {p31 + 1, 5}},
      {BRNG_MCG31M1, {4294967295}},
      {BRNG_MCG59, {}},
      {BRNG_MCG59, {0}},
      {BRNG_MCG59, {5}},
      {BRNG_MCG59, {0, 0xF8000000}},
      {BRNG_MCG59, {6, 0xFFFFFFFF, 7}},
      {BRNG_MRG32K3A, {}},
      {BRNG_MRG32K3A, {7}},
      {BRNG_MRG32K3A, {m1, m1, 0, 0, m2, 0}},
      {BRNG_MRG32K3A, {m1 + 5, m1 - 1, 4294967295, m2 + 5, m2 - 1, 4294967295, 3}},
      {BRNG_R250, {}},
      {BRNG_R250, {0}},
      {BRNG_R250, Words(249, 77)},
      {BRNG_R250, register_of_seeds},
      {5, {}},
      {5, {m[0]}},
      {5, {9, 10}},
      {5, {0, m[1], m[2] + 1, 4294967295, 6}},
  };
  for (const Repair& repair : repairs) {
    for (const Case& c : cases()) {
      if (c.brng != repair.brng) continue;
      const Seeded stream(c.brng, repair.seeds);
      const auto model = c.model(repair.seeds);
      EXPECT_EQ(elements(stream, 300), elements(*model, 300))
          << c.name << testing::PrintToString(repair.seeds);
    }
  }
  for (const Case& c : cases()) {
    const Seeded stream(c.brng, some_seeds);
    EXPECT_EQ(init(stream, 0, -1, {7}), RNG_OK);
    EXPECT_EQ(elements(stream, 9), elements(*c.model({}), 9)) << c.name << " a negative count";
  }
  double first;
  __zokdBRngMCG31M1(Seeded(BRNG_MCG31M1, {0}), 1, &first, 0, 1);
  EXPECT_EQ(first, 4.656612875245797e-10);
}

TEST(Congruential, LeapfrogPicks) {
  for (const Case& c : cases()) {
    SCOPED_TRACE(c.name);
    const Seeded stream(c.brng, some_seeds);
    if (!c.leapfrogs) {
      EXPECT_EQ(init(stream, 1, 3, {1}), RNG_LEAPFROG_UNSUPPORTED);
      EXPECT_EQ(elements(stream, 5), elements(*c.model(some_seeds), 5));
      continue;
    }
    const auto all = elements(*c.model(some_seeds), 4000);
    EXPECT_EQ(init(stream, 1, 7, {4}), RNG_OK);
    auto got = elements(stream, 40);
    for (int i = 0; i < 40; ++i) ASSERT_EQ(got[i], all[4 + 7 * i]) << i;
    // The third of five streams of what is left, then 11 of its elements passed over.
    EXPECT_EQ(init(stream, 1, 5, {3}), RNG_OK);
    got = elements(stream, 20);
    for (int i = 0; i < 20; ++i) ASSERT_EQ(got[i], all[4 + 7 * (40 + 3 + 5 * i)]) << i;
    EXPECT_EQ(init(stream, 2, 2, {11, 0}), RNG_OK);
    got = elements(stream, 20);
    for (int i = 0; i < 20; ++i) ASSERT_EQ(got[i], all[4 + 7 * (40 + 3 + 5 * (31 + i))]) << i;
  }
}

TEST(Congruential, SkipAheadPasses) {
  for (const Case& c : cases()) {
    SCOPED_TRACE(c.name);
    const Seeded stream(c.brng, some_seeds);
    if (!c.skips) {
      EXPECT_EQ(init(stream, 2, 2, {1, 0}), RNG_SKIPAHEAD_UNSUPPORTED);
      EXPECT_EQ(elements(stream, 5), elements(*c.model(some_seeds), 5));
      continue;
    }
    const auto all = elements(*c.model(some_seeds), 100010);
    EXPECT_EQ(init(stream, 2, 2, {0, 0}), RNG_OK);
    EXPECT_EQ(elements(stream, 1)[0], all[0]);
    EXPECT_EQ(init(stream, 2, 2, {98765, 0}), RNG_OK);
    EXPECT_EQ(elements(stream, 2)[1], all[98767]);

    // Far skips add up: 2^32 is 65536 times 65536.
    const Seeded far(c.brng, some_seeds), steps(c.brng, some_seeds);
    EXPECT_EQ(init(far, 2, 2, {0, 1}), RNG_OK);
    for (int i = 0; i < 65536; ++i) init(steps, 2, 2, {65536, 0});
    EXPECT_EQ(elements(far, 3), elements(steps, 3));
  }
}

TEST(Congruential, OtherMethodsAreRefused) {
  for (const Case& c : cases()) {
    const Seeded stream(c.brng, some_seeds);
    for (int32_t method : {-1, 3}) EXPECT_EQ(init(stream, method, 2, {1, 0}), RNG_BAD_METHOD);
    EXPECT_EQ(elements(stream, 5), elements(*c.model(some_seeds), 5)) << c.name;
  }
}

TEST(Congruential, ZeroCountMakesOneElementInTwoGenerators) {
  for (const Case& c : cases()) {
    const bool makes_one = c.brng == BRNG_MCG31M1 || c.brng == BRNG_R250;
    const Seeded stream(c.brng, some_seeds);
    const BrngProperties row = properties_of(c.brng);
    const auto model = c.model(some_seeds);
    Words words = rubbish(4);
    double d = -77;
    float s = -77;
    EXPECT_EQ(row.iBRng(stream, 0, words.data()), 0);
    EXPECT_EQ(row.dBRng(stream, 0, &d, 0, 1), 0);
    EXPECT_EQ(row.sBRng(stream, 0, &s, 0, 1), 0);
    if (makes_one) {
      EXPECT_EQ(words[0], model->next()[0]) << c.name;
      EXPECT_EQ(d, model->number(model->next(), 0, 1)) << c.name;
      EXPECT_EQ(s, static_cast<float>(model->number(model->next(), 0, 1))) << c.name;
    } else {
      EXPECT_EQ(words, rubbish(4)) << c.name;
      EXPECT_TRUE(d == -77 && s == -77) << c.name;
    }
    EXPECT_EQ(elements(stream, 20), elements(*model, 20)) << c.name;
  }
}

TEST(Congruential, EveryRoundingModeGivesTheSameWords) {
  for (const Case& c : cases()) {
    for (const uint32_t mode : {0x2000u, 0x4000u, 0x6000u}) {
      const Seeded stream(c.brng, some_seeds);
      const uint32_t saved = __builtin_ia32_stmxcsr();
      __builtin_ia32_ldmxcsr((saved & ~0x6000u) | mode);
      const auto got = elements(stream, 5000);
      const uint32_t after = __builtin_ia32_stmxcsr();
      __builtin_ia32_ldmxcsr(saved);
      EXPECT_EQ(after & 0x6000, mode) << c.name;
      EXPECT_TRUE(got == elements(*c.model(some_seeds), 5000)) << c.name << " mode " << mode;
    }
  }
}

// ---- Known answers -----------------------------------------------------------------------------

TEST(Congruential, PublishedValuesOfMRG32K3A) {
  KnownAnswers answers;
  const Words published = answers.block("mrg32k3a", 12);
  const Words words = draw_words(Seeded(BRNG_MRG32K3A, Words(6, 12345)), 1000);
  for (int i = 0; i < 10; ++i) answers.expect(published[i], words[i], "mrg32k3a");
  answers.expect(published[10], words[99], "the 100th of mrg32k3a");
  answers.expect(published[11], words[999], "the 1000th of mrg32k3a");
  EXPECT_EQ(answers.used(), 12);
}

// ---- The law -----------------------------------------------------------------------------------

/// Fixed seeds. Each figure is a standard normal one when the numbers are uniform and independent.
TEST(Congruential, NumbersAreUniformAndUncorrelated) {
  constexpr int n = 1 << 20, cells = 1024;
  for (const Case& c : cases()) {
    const std::vector<double> u = draw_doubles(Seeded(c.brng, some_seeds), n);
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
