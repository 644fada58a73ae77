// SPDX-License-Identifier: MIT
// Streams and distributions of the C++ face against the C interface, and as what the C++ library
// expects of a generator.
#include <gtest/gtest.h>
#include <unistd.h>
#include <orv/distributions.hpp>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <random>

#include "cpp_support.hpp"

namespace {

using orv_test::refusal;

static_assert(std::uniform_random_bit_generator<orv::stream>);
static_assert(std::uniform_random_bit_generator<orv::words>);
static_assert(std::is_nothrow_move_constructible_v<orv::stream>);

const orv::generator generators[] = {orv::mcg31m1,   orv::r250,       orv::mrg32k3a, orv::mcg59,
                                     orv::wh(5),     orv::mt19937,    orv::sobol,    orv::niederr,
                                     orv::sfmt19937, orv::mt2203(700)};
const orv::generator random_generators[] = {orv::mcg31m1,   orv::r250,       orv::mrg32k3a,
                                            orv::mcg59,     orv::wh(5),      orv::mt19937,
                                            orv::sfmt19937, orv::mt2203(700)};

std::vector<uint32_t> words_of(orv::stream& s, size_t n) {
  std::vector<uint32_t> w(n);
  s.fill(w);
  return w;
}

TEST(CppStream, WordsAreTheSameHoweverTheyAreAskedFor) {
  for (const orv::generator g : generators) {
    orv::stream at_once(g, 1), single(g, 1), mixed(g, 1), source(g, 1);
    orv::words from_blocks(source);
    const std::vector<uint32_t> expected = words_of(at_once, 700);
    std::vector<uint32_t> found[3];
    for (size_t k = 0; k < 700; ++k) {
      found[0].push_back(single());
      found[2].push_back(from_blocks());
    }
    for (const size_t part : {1, 0, 300, 2, 397}) {
      const std::vector<uint32_t> w = words_of(mixed, part);
      found[1].insert(found[1].end(), w.begin(), w.end());
    }
    for (const auto& w : found) EXPECT_EQ(w, expected) << g.brng;
  }
}

TEST(CppStream, WordsAreTheGenerators) {
  for (const orv::generator g : {orv::mt19937, orv::r250, orv::mt2203(3), orv::mrg32k3a}) {
    orv::stream s(g, 9), raw(g, 9);
    std::vector<uint32_t> expected(50);
    _zokiRngUniformBits(0, raw.get(), 50, expected.data());
    EXPECT_EQ(words_of(s, 50), expected);
  }

  orv::stream mcg59(orv::mcg59, 9), raw59(orv::mcg59, 9);
  std::vector<uint64_t> long_words(50);
  _zokiRngUniformBits(0, raw59.get(), 50, reinterpret_cast<uint32_t*>(long_words.data()));
  for (const uint64_t w : long_words) EXPECT_EQ(mcg59(), static_cast<uint32_t>(w >> 27));
}

/// A bit that is always 0, or half a word that repeats another, would show.
TEST(CppStream, EveryBitOfAWordIsRandom) {
  constexpr int count = 20000;
  for (const orv::generator g : random_generators) {
    orv::stream s(g, 4711);
    std::array<int, 32> ones{};
    uint32_t last = 0;
    int repeats = 0;
    for (int k = 0; k < count; ++k) {
      const uint32_t w = s();
      for (int b = 0; b < 32; ++b) ones[b] += w >> b & 1;
      repeats += (w & 0xFFFF) == (w >> 16) || (w >> 16) == (last & 0xFFFF);
      last = w;
    }
    for (int b = 0; b < 32; ++b) EXPECT_NEAR(ones[b], count / 2, 5 * 71) << g.brng << " bit " << b;
    EXPECT_LT(repeats, 10) << g.brng;
  }
}

TEST(CppStream, ServesTheStandardLibrary) {
  orv::stream s(orv::mcg31m1, 5);
  std::vector<int> cards(1000);
  std::iota(cards.begin(), cards.end(), 0);
  std::shuffle(cards.begin(), cards.end(), s);
  EXPECT_FALSE(std::is_sorted(cards.begin(), cards.end()));
  orv::words words(s);
  std::normal_distribution<double> normal(3, 0.5);
  std::uniform_int_distribution<int> die(1, 6);
  double sum = 0;
  std::array<int, 7> faces{};
  for (int k = 0; k < 60000; ++k) {
    sum += normal(words);
    ++faces[die(s)];
  }
  EXPECT_NEAR(sum / 60000, 3, 5 * 0.5 / 245);
  for (int face = 1; face <= 6; ++face) EXPECT_NEAR(faces[face], 10000, 5 * 92);
}

TEST(CppStream, CopiesMovesAndFilesContinue) {
  const std::string path = testing::TempDir() + "cpp_stream_" + std::to_string(getpid());
  for (const orv::generator g : generators) {
    orv::stream s(g, {2, 0, 0});
    orv::sample(s, orv::normal{.method = orv::normal_method::box_muller_pairs}, 7);  // half a pair
    s.save(path);
    orv::stream copy = s, assigned(orv::mt19937), loaded = orv::stream::load(path);
    assigned = s;
    EXPECT_EQ(loaded.basic_generator(), g);
    const auto future = [](orv::stream& from) {
      return orv::sample(from, orv::normal{.method = orv::normal_method::box_muller_pairs}, 300);
    };
    const std::vector<double> expected = future(s);
    for (orv::stream* other : {&copy, &assigned, &loaded}) EXPECT_EQ(future(*other), expected);
    orv::stream moved = std::move(copy);
    EXPECT_EQ(moved(), s());
    EXPECT_EQ(refusal([&] { words_of(copy, 1); }), "orv::fill: the stream has been moved away");
  }
  unlink(path.c_str());
  EXPECT_EQ(refusal([&] { orv::stream::load(path); }),
            "orv::load: '" + path + "': the file can't be opened");
  EXPECT_EQ(refusal([] { orv::stream::load("/dev/null"); }),
            "orv::load: '/dev/null': the file can't be read or is cut short");
  EXPECT_EQ(refusal([] { orv::stream(orv::mt19937).save("/no/such/folder"); }),
            "orv::save: '/no/such/folder': the file can't be opened");
}

TEST(CppStream, SkipsAndLeapsAsDrawingDoes) {
  for (const orv::generator g : {orv::mcg59, orv::mcg31m1, orv::mrg32k3a, orv::wh()}) {
    orv::stream walked(g, 3), skipped(g, 3);
    std::vector<double> x(1001), y(1);
    walked.fill(x);
    skipped.skip(1000);
    skipped.fill(y);
    EXPECT_EQ(y[0], x[1000]);
    if (g == orv::mrg32k3a) continue;
    orv::stream third(g, 3);
    third.leapfrog(2, 3);
    std::vector<double> z(100);
    third.fill(z);
    for (size_t i = 0; i < z.size(); ++i) ASSERT_EQ(z[i], x[3 * i + 2]);
  }
  orv::stream points(orv::sobol, 5), coordinate(orv::sobol, 5);
  std::vector<float> all(50), one(10);
  points.fill(all);
  coordinate.select_coordinate(3);
  coordinate.fill(one);
  for (size_t i = 0; i < one.size(); ++i) EXPECT_EQ(one[i], all[5 * i + 3]);
  EXPECT_EQ(refusal([] { orv::stream(orv::mt19937).skip(1); }),
            "orv::skip: the generator can't skip so far, or not at all");
  EXPECT_EQ(refusal([] { orv::stream(orv::r250).leapfrog(0, 2); }),
            "orv::leapfrog: the generator has no leapfrog of this kind");
  EXPECT_EQ(refusal([] { orv::stream(orv::mcg59).leapfrog(2, 2); }),
            "orv::leapfrog: stream 2 of 2; they are counted from 0");
  EXPECT_EQ(refusal([] { orv::stream(orv::generator{5}, 1), orv::stream(orv::generator{-1}); }),
            "orv::stream: no generator has this identifier");
}

/// The mean correlation of neighbours among the streams, in their first numbers.
double correlation_of_beginnings(std::vector<orv::stream> streams) {
  constexpr size_t n = 64;
  std::vector<double> before(n), here(n);
  double sum = 0;
  for (orv::stream& s : streams) {
    s.fill(here);
    for (size_t i = 0; i < n; ++i) sum += 12 * (here[i] - 0.5) * (before[i] - 0.5);
    before = here;
  }
  return sum / static_cast<double>(n * streams.size());
}

TEST(CppStream, ThreadsGetStreamsOfTheirOwn) {
  for (const orv::generator g : {orv::mt2203(10), orv::wh()}) {
    EXPECT_LT(std::abs(correlation_of_beginnings(orv::streams_for_threads(250, g, 6))), 0.03);
    const auto once = orv::streams_for_threads(3, g, 6), again = orv::streams_for_threads(3, g, 6);
    const auto other = orv::streams_for_threads(3, g, 7);
    for (size_t k = 0; k < 3; ++k) {
      EXPECT_EQ(once[k].basic_generator().brng, g.brng + static_cast<int32_t>(k));
      orv::stream a = once[k], b = again[k], c = other[k];
      EXPECT_EQ(words_of(a, 20), words_of(b, 20));
      EXPECT_NE(words_of(a, 20), words_of(c, 20));
    }
  }
  const struct {
    orv::generator g;
    uint64_t distance;
  } rows[] = {{orv::mcg31m1, 0x7FFFFFFEu / 3},
              {orv::mcg59, (uint64_t{1} << 57) / 3},
              {orv::mrg32k3a, uint64_t{1} << 63}};
  for (const auto& row : rows) {
    const auto parts = orv::streams_for_threads(3, row.g, 6);
    orv::stream at(row.g, 6);
    for (int k = 0; k < 3; ++k) {
      orv::stream here = at, part = parts[k];
      EXPECT_EQ(words_of(part, 20), words_of(here, 20)) << row.g.brng << " " << k;
      at.skip(row.distance);
    }
  }
  EXPECT_TRUE(orv::streams_for_threads(0, orv::mcg59).empty());
  EXPECT_EQ(refusal([] { orv::streams_for_threads(5, orv::mt2203(1020)); }),
            "orv::streams_for_threads: 5 streams; the family has 4 generators from here on");
  EXPECT_EQ(refusal([] { orv::streams_for_threads(2, orv::mt19937); }),
            "orv::streams_for_threads: the generator can't be split; take mt2203, wh, mrg32k3a, "
            "mcg59 or mcg31m1");
  EXPECT_EQ(refusal([] { orv::mt2203(1024); }), "orv::mt2203: member 1024; allowed is 0 to 1023");
}

/// Draws by the face and by an entry with the parameters that follow.
template <class R, class Law, class... P>
void expect_same(const Law& law, int32_t (*entry)(int32_t, StreamState*, int32_t, R*, P...),
                 int32_t method, std::type_identity_t<P>... parameters) {
  orv::stream face(orv::mcg59, 12), c(orv::mcg59, 12);
  std::vector<R> found(41), expected(41);
  orv::sample(face, law, std::span(found).first(17));
  orv::sample(face, law, std::span(found).subspan(17));
  entry(method, c.get(), 41, expected.data(), parameters...);
  EXPECT_EQ(found, expected) << Law::name;
}

TEST(CppDistribution, EachIsItsEntryWithItsParameters) {
#define ORV_BOTH(law, Entry, method, ...)                         \
  expect_same<double>(law, _zokdRng##Entry, method, __VA_ARGS__); \
  expect_same<float>(law, _zoksRng##Entry, method, __VA_ARGS__)
  using M = orv::normal_method;
  ORV_BOTH((orv::uniform{-1, 3}), Uniform, 0, -1, 3);
  ORV_BOTH((orv::uniform{2, 3, true}), Uniform, RNG_ACCURATE, 2, 3);
  ORV_BOTH((orv::normal{5, 2}), Gaussian, RNG_GAUSSIAN_ICDF, 5, 2);
  ORV_BOTH((orv::normal{5, 2, M::box_muller}), Gaussian, RNG_GAUSSIAN_BOXMULLER, 5, 2);
  ORV_BOTH((orv::normal{5, 2, M::box_muller_pairs}), Gaussian, RNG_GAUSSIAN_BOXMULLER2, 5, 2);
  ORV_BOTH((orv::exponential{.scale = 2, .shift = 5}), Exponential, 0, 5, 2);
  ORV_BOTH((orv::rayleigh{.scale = 2, .shift = 5}), Rayleigh, 0, 5, 2);
  ORV_BOTH((orv::laplace{5, 2}), Laplace, 0, 5, 2);
  ORV_BOTH((orv::cauchy{5, 2}), Cauchy, 0, 5, 2);
  ORV_BOTH((orv::gumbel{5, 2}), Gumbel, 0, 5, 2);
  ORV_BOTH((orv::weibull{.shape = 1.5, .scale = 2, .shift = 5}), Weibull, 0, 1.5, 5, 2);
  ORV_BOTH((orv::gamma{.shape = 1.5, .scale = 2, .shift = 5}), Gamma, 0, 1.5, 5, 2);
  ORV_BOTH((orv::lognormal{0.5, 0.25, 5, 2}), Lognormal, 0, 0.5, 0.25, 5, 2);
  ORV_BOTH((orv::beta{1.5, 2.5, 5, 2}), Beta, 0, 1.5, 2.5, 5, 2);
#undef ORV_BOTH
  expect_same<int32_t>(orv::uniform_int{-5, 9}, _zokiRngUniform, 0, -5, 9);
  expect_same<int32_t>(orv::bernoulli{0.3}, _zokiRngBernoulli, 0, 0.3);
  expect_same<int32_t>(orv::geometric{0.3}, _zokiRngGeometric, 0, 0.3);
  expect_same<int32_t>(orv::binomial{20, 0.3}, _zokiRngBinomial, 0, 20, 0.3);
  expect_same<int32_t>(orv::negative_binomial{2.5, 0.3}, _zokiRngNegbinomial, 0, 2.5, 0.3);
  expect_same<int32_t>(orv::hypergeometric{50, 20, 10}, _zokiRngHypergeometric, 0, 50, 20, 10);
  expect_same<int32_t>(orv::poisson{4.5}, _zokiRngPoisson, RNG_POISSON_PTPE, 4.5);
  expect_same<int32_t>(orv::poisson{4.5, true}, _zokiRngPoisson, RNG_POISSON_POISNORM, 4.5);
}

TEST(CppDistribution, VectorsAndMeansOfTheirOwn) {
  const std::vector<float> mean{1, 2}, factor{2, 99, 0.5f, 3};
  orv::stream face(orv::mt19937), c(orv::mt19937);
  std::vector<float> found(20), expected(20);
  const orv::multivariate_normal<float> law{mean, factor};
  orv::sample(face, law, found);
  _zoksRngGaussianMV(RNG_GAUSSIAN_ICDF, c.get(), 10, expected.data(), 2, RNG_STORAGE_FULL,
                     mean.data(), factor.data());
  EXPECT_EQ(found, expected);
  const std::vector<double> means{1, 100, 5};
  std::vector<int32_t> counts(3), expected_counts(3);
  orv::sample(face, orv::poisson_each{means}, counts);
  _zokiRngPoissonV(0, c.get(), 3, expected_counts.data(), means.data());
  EXPECT_EQ(counts, expected_counts);
}

TEST(CppDistribution, ParametersAreCheckedAndNothingIsDrawn) {
  orv::stream s(orv::mt19937);
  const auto next = orv::stream(s)();
  std::vector<float> y(3);
  std::vector<int32_t> k(3);
  const std::vector<float> mean{1, 2}, factor(3);
  const std::vector<double> means{1, 0, 5};
  const struct {
    const char* text;
    std::function<void()> call;
  } rows[] = {
      {"orv::normal: sd is -1; it has to be finite and above 0",
       [&] {
         orv::sample(s, orv::normal{0, -1}, y);
       }},
      {"orv::normal: sd is 1e-60; it has to be finite and above 0",  // as a float
       [&] {
         orv::sample(s, orv::normal{0, 1e-60}, y);
       }},
      {"orv::gamma: shape is nan; it has to be finite and above 0",
       [&] { orv::sample(s, orv::gamma{.shape = std::nan("")}, 1); }},
      {"orv::cauchy: location is inf; it has to be finite",
       [&] {
         orv::sample(s, orv::cauchy{HUGE_VAL, 1}, y);
       }},
      {"orv::uniform: high is 1; it has to be above low",
       [&] {
         orv::sample(s, orv::uniform{1, 1}, y);
       }},
      {"orv::uniform_int: high is -5; it has to be above low",
       [&] {
         orv::sample(s, orv::uniform_int{3, -5});
       }},
      {"orv::bernoulli: p is 1.5; it has to be from 0 to 1",
       [&] { orv::sample(s, orv::bernoulli{1.5}, k); }},
      {"orv::geometric: p is 0; it has to be above 0, to 1",
       [&] { orv::sample(s, orv::geometric{0}, k); }},
      {"orv::hypergeometric: sample is 6; it has to be from 0 to 5",
       [&] {
         orv::sample(s, orv::hypergeometric{5, 6, 1}, k);
       }},
      {"orv::poisson: mean is 3000000000; it has to be above 0, to 2000000000",
       [&] { orv::sample(s, orv::poisson{3e9}, k); }},
      {"orv::poisson_each: a mean is 0; it has to be above 0, to 2000000000",
       [&] { orv::sample(s, orv::poisson_each{means}, k); }},
      {"orv::multivariate_normal: the factor has 3 elements; it needs 4",
       [&] {
         orv::sample(s, orv::multivariate_normal<float>{mean, factor}, y);
       }},
      {"orv::multivariate_normal: the result has 3 elements; it needs a multiple of 2",
       [&] {
         orv::sample(s, orv::multivariate_normal<float>{mean, std::vector<float>(4)}, y);
       }},
  };
  for (const auto& row : rows) EXPECT_EQ(refusal(row.call), row.text);
  EXPECT_EQ(s(), next);
}

}  // namespace
