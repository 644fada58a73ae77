// SPDX-License-Identifier: MIT
// Discrete distributions beside their laws: sequences however a request is split, what a number
// costs, what is kept on the stream, ends of the uniform numbers, failures.
#include <math.h>

#include <algorithm>
#include <random>

#include "distributions.hpp"
#include "zok/_src/zok_sub_kernel/_service/chunk.hpp"

using namespace orv_test;
using orv::Chunk;
using orv::first_chunk;

namespace {

using Numbers = std::vector<int32_t>;

Numbers numbers(const Draw<int32_t>& draw, StreamState* stream, int32_t n) {
  Numbers r(n, 77);
  EXPECT_EQ(draw(stream, n, r.data()), RNG_OK);
  return r;
}

TEST(Discrete, ASplitChangesNothing) {
  for (const Discrete& d : discrete_draws()) {
    for (const int32_t brng : generators) {
      const Numbers whole = numbers(d.draw, Stream(brng), 5000);
      for (const Numbers& sizes : {Numbers{1}, Numbers{7}, Numbers{1000}, Numbers{1025, 1, 511}}) {
        const Stream stream(brng);
        Numbers r(5000);
        size_t part = 0;
        for (int32_t done = 0; done < 5000; ++part) {
          const int32_t count = std::min(5000 - done, sizes[part % sizes.size()]);
          ASSERT_EQ(d.draw(stream, count, r.data() + done), RNG_OK);
          done += count;
        }
        ASSERT_EQ(r, whole) << d.name << ' ' << brng;
      }
    }
  }
}

/// The numbers of some seed are the same in every build, and so is what they leave on the stream,
/// which files carry from one to another.
TEST(Discrete, NumbersAndRecordsAreTheSameEverywhere) {
  uint64_t hash = 14695981039346656037u;
  const auto add = [&](const void* data, size_t size) {
    for (size_t i = 0; i < size; ++i) {
      hash = (hash ^ static_cast<const unsigned char*>(data)[i]) * 1099511628211u;
    }
  };
  testing::Message each;
  for (const Discrete& d : discrete_draws()) {
    const Stream stream(BRNG_MT19937);
    const Numbers r = numbers(d.draw, stream, 3000);
    add(r.data(), 4 * r.size());
    each << d.name << ' ' << std::hex << hash;
    if (d.chunk != 0) add(first_chunk(stream)->Data, first_chunk(stream)->Size);
    each << ' ' << hash << '\n';
  }
  EXPECT_EQ(hash, 14165826964231005978u) << each;
}

/// The first call, which makes a table, and the next ones.
TEST(Discrete, CostAsManyUniformsAsTheHeaderSays) {
  for (const Discrete& d : discrete_draws()) {
    if (d.kind == Discrete::rejection) continue;
    Stream stream(BRNG_MT19937), expected(BRNG_MT19937);
    for (const int32_t n : {1, 2, 1023, 1024, 2049}) {
      numbers(d.draw, stream, n);
      draw<double>(expected, n);
      EXPECT_EQ(draw_words(stream, 1), draw_words(expected, 1)) << d.name << ' ' << n;
    }
  }
  const Stream stream(BRNG_MT19937);
  for (const auto& [parameters, only] : std::vector<std::pair<Numbers, int32_t>>{
           {{10, 0, 5}, 0},
           {{10, 10, 5}, 5},
           {{10, 4, 0}, 0},
           {{10, 4, 10}, 4},
           {{7, 7, 7}, 7},
           {{2147483647, 0, 1073741824}, 0},
           {{2147483647, 2147483647, 2147483646}, 2147483646}}) {
    const auto draw =
        bound<int32_t>(_zokiRngHypergeometric, 0, parameters[0], parameters[1], parameters[2]);
    EXPECT_EQ(numbers(draw, stream, 3), Numbers(3, only));
  }
  EXPECT_EQ(draw_words(stream, 1), draw_words(Stream(BRNG_MT19937), 1));
}

TEST(Discrete, NoneIsDrawnForNone) {
  for (const Discrete& d : discrete_draws()) {
    for (const int32_t n : {0, -1, -1024}) {
      const Stream stream(BRNG_MT19937);
      int32_t r = 77;
      EXPECT_EQ(d.draw(stream, n, &r), RNG_OK) << d.name;
      EXPECT_EQ(r, 77) << d.name;
      EXPECT_EQ(draw_words(stream, 5), draw_words(Stream(BRNG_MT19937), 5)) << d.name;
    }
  }
}

// ---- What is kept on the stream -----------------------------------------------------------------

std::string bytes_of(const Chunk* chunk) {
  return {static_cast<const char*>(chunk->Data), chunk->Size};
}

/// A second call finds what the first one made, in copies and files, too.
TEST(Discrete, WhatIsMadeOfTheParametersIsKept) {
  for (const Discrete& d : discrete_draws()) {
    const Stream stream(BRNG_MT19937);
    numbers(d.draw, stream, 1);
    ASSERT_EQ(__zokGetNumChunks(stream), d.chunk != 0) << d.name;
    if (d.chunk == 0) continue;
    const std::string made = bytes_of(first_chunk(stream));
    EXPECT_EQ(first_chunk(stream)->Id, static_cast<uint32_t>(d.chunk));
    Stream copy, loaded;
    const std::string name = memory_file();
    ASSERT_EQ(save(stream, name), RNG_OK);
    ASSERT_EQ(load(&loaded, name), RNG_OK);
    ASSERT_EQ(__zokCopyStream(&copy, stream), RNG_OK);
    const Numbers expected = numbers(d.draw, stream, 700);
    EXPECT_EQ(bytes_of(first_chunk(stream)), made) << d.name;
    EXPECT_EQ(numbers(d.draw, copy, 700), expected) << d.name;
    EXPECT_EQ(numbers(d.draw, loaded, 700), expected) << d.name;
    EXPECT_EQ(__zokGetNumChunks(loaded), 1) << d.name;
  }
}

/// Parameters that change are noticed, and change back to the same numbers.
TEST(Discrete, OtherParametersMakeTheRecordAnew) {
  for (const Discrete& d : discrete_draws()) {
    for (const Discrete& other : discrete_draws()) {
      if (d.chunk == 0 || other.chunk != d.chunk) continue;
      const Stream stream(BRNG_MT19937), plain(BRNG_MT19937);
      numbers(d.draw, stream, 10);
      numbers(other.draw, stream, 10);
      __zokCopyStreamState(plain, stream);
      __zokDeleteChunks(plain);
      EXPECT_EQ(numbers(d.draw, stream, 100), numbers(d.draw, plain, 100)) << d.name;
    }
  }
}

/// Under the same identifier, but of another size: it stays where it is.
TEST(Discrete, AForeignRecordIsLeftAlone) {
  for (const Discrete& d : discrete_draws()) {
    if (d.chunk == 0) continue;
    for (const int32_t size : {0, 8, 544, 696, 1328, 100000}) {
      const Stream stream(BRNG_MT19937);
      void* const data = orv_serv_orv_malloc(size, 32);
      ASSERT_EQ(__zokAddChunk(stream, d.chunk, memset(data, 0x41, size), size), RNG_OK);
      EXPECT_EQ(numbers(d.draw, stream, 300), numbers(d.draw, Stream(BRNG_MT19937), 300)) << d.name;
      const Chunk* const next = first_chunk(stream)->Next;
      EXPECT_EQ(bytes_of(next), std::string(size, 0x41)) << d.name;
    }
  }
}

/// A record that fits, but for what stands in it: any numbers may come, but they do.
TEST(Discrete, ARecordOfAnybodyEndsNoLessThanOurs) {
  std::mt19937 random(1);
  const double odd[] = {0, -1, 1, NAN, INFINITY, -INFINITY, 1e300, -1e300, 1e-300, 1e9, -1e9};
  for (const Discrete& d : discrete_draws()) {
    if (d.chunk == 0) continue;
    for (int trial = 0; trial < 60; ++trial) {
      const Stream stream(BRNG_MT19937);
      numbers(d.draw, stream, 1);
      const Chunk* const chunk = first_chunk(stream);
      auto* const words = static_cast<double*>(chunk->Data);
      for (size_t i = 3; i < chunk->Size / 8; ++i) {  // behind the parameters
        const uint64_t bits = random() | uint64_t{random()} << 32;
        if (trial < 11)
          words[i] = odd[trial];
        else if (trial % 2 == 0)
          words[i] = odd[bits % 11];
        else
          memcpy(words + i, &bits, 8);
      }
      numbers(d.draw, stream, 2000);
    }
  }
}

/// Where others come than those kept; the first ones forget nothing.
TEST(Discrete, HypergeometricParametersThatChangeClearTheStream) {
  const auto draw = [](StreamState* stream, int32_t sample) {
    int32_t r;
    EXPECT_EQ(_zokiRngHypergeometric(0, stream, 1, &r, 1000, sample, 300), RNG_OK);
    return __zokGetNumChunks(stream);
  };
  const Stream stream(BRNG_MT19937);
  int32_t r;
  _zokiRngPoisson(0, stream, 1, &r, 5);
  _zokiRngBinomial(0, stream, 1, &r, 10, 0.5);
  EXPECT_EQ(draw(stream, 20), 3);
  EXPECT_EQ(draw(stream, 20), 3);
  EXPECT_EQ(draw(stream, 0), 3) << "one number only: no parameters to keep";
  EXPECT_EQ(draw(stream, 400), 1);
}

// ---- Ends ---------------------------------------------------------------------------------------

/// 0, the last fraction below 1, and 1 itself: numbers of the law's range, and its ends where a
/// single uniform decides.
TEST(Discrete, WalksEndForEveryUniform) {
  const double below_1 = 1 - 0x1p-53;
  const struct {
    const char* what;
    Draw<int32_t> draw;
    int32_t of_0, least_of_1, most_of_1;
  } rows[] = {
      {"geometric", bound<int32_t>(_zokiRngGeometric, 0, 0.5), 1074, 0, 0},
      {"geometric of 1", bound<int32_t>(_zokiRngGeometric, 0, 1), 0, 0, 0},
      {"rare", bound<int32_t>(_zokiRngGeometric, 0, 1e-9), 2147483647, 0, 0},
      {"binomial", bound<int32_t>(_zokiRngBinomial, 0, 10, 0.25), 0, 10, 10},
      {"turned", bound<int32_t>(_zokiRngBinomial, 0, 10, 0.75), 10, 0, 0},
      {"one of 2^31", bound<int32_t>(_zokiRngBinomial, 0, 2147483647, 1.2345e-8), 0, 75, 110},
      {"none", bound<int32_t>(_zokiRngBinomial, 0, 0, 0.25), 0, 0, 0},
      {"never", bound<int32_t>(_zokiRngBinomial, 0, 10, 0), 0, 0, 0},
      {"always", bound<int32_t>(_zokiRngBinomial, 0, 10, 1), 10, 10, 10},
      {"poisson", bound<int32_t>(_zokiRngPoisson, 0, 26.9), 0, 78, 110},
      {"hypergeometric", bound<int32_t>(_zokiRngHypergeometric, 0, 90, 40, 30), 0, 29, 30},
      {"of many", bound<int32_t>(_zokiRngHypergeometric, 0, 1000, 300, 120), 3, 60, 120},
      {"negative", bound<int32_t>(_zokiRngNegbinomial, 0, 2.5, 0.5), 0, 50, 90},
      {"beyond the table", bound<int32_t>(_zokiRngNegbinomial, 0, 10.5, 0.0868), 0, 500, 1000},
  };
  for (const auto& row : rows) {
    const Given<double> stream({0, below_1, 1});
    const Numbers r = numbers(row.draw, stream, 3000);
    EXPECT_EQ(r[0], row.of_0) << row.what;
    for (int i = 1; i < 3; ++i) {
      EXPECT_GE(r[i], row.least_of_1) << row.what << ' ' << i;
      EXPECT_LE(r[i], row.most_of_1) << row.what << ' ' << i;
    }
  }
  // Uniforms at the ends are candidates as others are; the last pair is accepted.
  for (const Discrete& d : discrete_draws()) {
    if (d.kind != Discrete::rejection) continue;
    const Given<double> stream({0, 0, 0, 1, 1, 0, 1, 1, 0, below_1, below_1, 0, 0.25, 0.5});
    for (const int32_t x : numbers(d.draw, stream, 100)) EXPECT_GE(x, 0) << d.name;
  }
}

TEST(Discrete, WhereNoNumberComesItEnds) {
  for (const Discrete& d : discrete_draws()) {
    if (d.kind != Discrete::rejection) continue;
    int32_t r[3];
    EXPECT_EQ(d.draw(Given<double>({1}), 3, r), RNG_BAD_ARGS) << d.name;
  }
}

TEST(Discrete, FloatEndsAndParametersThatDecideAlone) {
  const Given<float> ends({0, 1, 0.5f, 1 - 0x1p-24f});
  const auto bernoulli = [&](double p) {
    return numbers(bound<int32_t>(_zokiRngBernoulli, 0, p), ends, 4);
  };
  EXPECT_EQ(bernoulli(0), Numbers({0, 0, 0, 0}));
  EXPECT_EQ(bernoulli(1), Numbers({1, 1, 1, 1}));
  EXPECT_EQ(bernoulli(0.5), Numbers({1, 0, 0, 0}));
  EXPECT_EQ(bernoulli(-0.0), Numbers({0, 0, 0, 0}));
  const auto most = numbers(bound<int32_t>(_zokiRngPoisson, 1, 0.99), ends, 4);
  EXPECT_EQ(most[0], 0);
  EXPECT_EQ(*std::max_element(most.begin(), most.end()), most[1]);
  EXPECT_LE(most[1], 11);

  const Stream stream(BRNG_MT19937);
  const int32_t greatest = 2147483647;
  for (const auto& [draw, expected] : std::vector<std::pair<Draw<int32_t>, int32_t>>{
           {bound<int32_t>(_zokiRngPoisson, 0, INFINITY), greatest},
           {bound<int32_t>(_zokiRngPoisson, 0, 1e12), greatest},
           {bound<int32_t>(_zokiRngPoisson, 0, 0), 0},
           {bound<int32_t>(_zokiRngPoisson, 0, -1), 0},
           {bound<int32_t>(_zokiRngPoisson, 1, 1e11), greatest},
           {bound<int32_t>(_zokiRngNegbinomial, 0, 3, 0), greatest},
           {bound<int32_t>(_zokiRngNegbinomial, 0, 3, 1e-30), greatest},
           {bound<int32_t>(_zokiRngNegbinomial, 0, 3, 1), 0},
           {bound<int32_t>(_zokiRngNegbinomial, 0, 1e-18, 1e-5), 0},
           {bound<int32_t>(_zokiRngNegbinomial, 0, 1e-12, 1e-300), 0},
           {bound<int32_t>(_zokiRngNegbinomial, 0, 0, 0.5), 0}}) {
    EXPECT_EQ(numbers(draw, stream, 5), Numbers(5, expected));
  }
  for (const double nothing : {NAN, -INFINITY}) {  // some number comes
    numbers(bound<int32_t>(_zokiRngPoisson, 0, nothing), stream, 5);
    numbers(bound<int32_t>(_zokiRngPoisson, 1, nothing), stream, 5);
    numbers(bound<int32_t>(_zokiRngBinomial, 0, 5, nothing), stream, 5);
    numbers(bound<int32_t>(_zokiRngNegbinomial, 0, nothing, nothing), stream, 5);
  }
}

/// Means of all regimes side by side: each number is that of its mean alone.
TEST(Discrete, AVectorOfMeansIsThatManyPoissonLaws) {
  const double of_regimes[] = {1e9, 0.5, 1, nextafter(2, 1), 99, 100, 0.9, 31, 1e4, 7, 2e9};
  std::vector<double> lambda(3000);
  for (size_t i = 0; i < lambda.size(); ++i) lambda[i] = of_regimes[i % 11];
  Numbers r(3000);
  ASSERT_EQ(_zokiRngPoissonV(0, Stream(BRNG_MT19937), 3000, r.data(), lambda.data()), RNG_OK);
  for (size_t j = 0; j < 11; ++j) {
    const std::vector<double> alike(3000, of_regimes[j]);
    Numbers expected(3000);
    _zokiRngPoissonV(0, Stream(BRNG_MT19937), 3000, expected.data(), alike.data());
    if (alike[0] >= 1) {
      EXPECT_EQ(numbers(bound<int32_t>(_zokiRngPoisson, 1, alike[0]), Stream(BRNG_MT19937), 3000),
                expected);
    }
    for (size_t i = j; i < r.size(); i += 11) ASSERT_EQ(r[i], expected[i]) << i;
  }
}

TEST(Discrete, AFailureIsPassedOn) {
  for (const Discrete& d : discrete_draws()) {
    uint32_t words[4];
    Stream stream;
    ASSERT_EQ(__zokiNewAbstractStream(&stream, 4, words, [](auto...) { return 0; }), RNG_OK);
    Numbers r(100, 77);
    EXPECT_EQ(d.draw(stream, 100, r.data()), RNG_ABSTRACT_BAD_FLAVOUR) << d.name;
    EXPECT_EQ(r, Numbers(100, 77)) << d.name;
    const Given<double> doubles({0.5, 0.25});
    const int32_t status = d.kind == Discrete::gaussian ? RNG_ABSTRACT_BAD_FLAVOUR : RNG_OK;
    EXPECT_EQ(d.draw(doubles, 20, r.data()), status) << d.name;
  }
}

}  // namespace
