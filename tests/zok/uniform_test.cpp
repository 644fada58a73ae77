// SPDX-License-Identifier: MIT
// The uniform distributions over any generator: what they make of its numbers.
#include <math.h>

#include <algorithm>

#include "stream_support.hpp"

using namespace orv_test;

namespace {

template <class T>
class Uniform : public testing::Test {};
using Types = testing::Types<double, float>;
TYPED_TEST_SUITE(Uniform, Types);

TYPED_TEST(Uniform, OnlyTheAccurateFormKeepsTheRange) {
  using T = TypeParam;
  Stream stream(Spy::brng());
  for (const int32_t method : {0, 1, ~0x40000000, 0x40000000, -1}) {
    const bool accurate = (method & RNG_ACCURATE) != 0;
    for (int32_t n = -1; n < 20; ++n) {
      Spy::next(stream) = 0;
      std::vector<T> r(20, T(99)), expected = r;
      Spy::answer = n < 1 ? 7 : RNG_OK;
      ASSERT_EQ(uniform(method, stream, n, r.data(), T(2.5), T(11)), Spy::answer);
      EXPECT_EQ(Spy::given, (std::vector{1.0 * n, 2.5, 11.0}));
      for (int k = 0; k < n; ++k) expected[k] = accurate ? std::clamp(T(k), T(2.5), T(11)) : T(k);
      EXPECT_EQ(r, expected) << method;
    }
  }
  T r[3] = {};
  Spy::answer = RNG_QRNG_EXHAUSTED;
  EXPECT_EQ(uniform(RNG_ACCURATE, stream, 3, r, T(5), T(6)), RNG_QRNG_EXHAUSTED);
  EXPECT_EQ(r[2], T(21)) << "as the generator left it";
  Spy::answer = RNG_OK;
}

/// Where rounding reaches the right end, and the words next to it.
TEST(UniformEnds, AreReachedWhereTheHeaderSaysSo) {
  const struct {
    int32_t brng;
    std::vector<uint32_t> seeds;
    double d;
    float s;
    int32_t percent, far;  // integers on [0, 100), and on a range of one near 2^31
  } rows[] = {
      {BRNG_MCG59, {0xFFFFFFFF, 0x7FFFFFF}, 1, 1, 100, INT32_MAX},
      {BRNG_MCG59, {0xFFFFFFE0, 0x7FFFFFF}, 1, 1, 100, INT32_MAX},
      {BRNG_MCG59, {0xFFFFFFDF, 0x7FFFFFF}, 1 - 0x1p-53, 1, 100, INT32_MAX},
      {BRNG_R250, {0xFFFFFF80}, 1 - 0x1p-25, 1, 99, INT32_MAX},
      {BRNG_R250, {0xFFFFFF7F}, 1 - 0x81p-32, 1 - 0x1p-24f, 99, INT32_MAX},
      {BRNG_R250, {0xFFFFFE00}, 1 - 0x1p-23, 1 - 0x1p-23f, 99, INT32_MAX},
      {BRNG_R250, {0xFFFFFDFF}, 1 - 0x201p-32, 1 - 0x1p-23f, 99, INT32_MAX - 1},
      {BRNG_MCG31M1, {0x7FFFFFFE}, 0x7FFFFFFE / 2147483647.0, 1, 99, INT32_MAX},
      // The first direction number of a user's own is the first word.
      {BRNG_SOBOL, {1, 1, 4, 0xFFFFFF80}, 1 - 0x1p-25, 1, 99, INT32_MAX},
      {BRNG_SOBOL, {1, 1, 4, 0xFFFFFF7F}, 1 - 0x82p-32, 1 - 0x1p-24f, 99, INT32_MAX},
      {BRNG_NIEDERR, {1, 1, 4, 0xFFFFFF80}, 1 - 0x1p-25, 1, 99, INT32_MAX},
      {BRNG_NIEDERR, {1, 1, 4, 0xFFFFFF7F}, 1 - 0x81p-32, 1 - 0x1p-24f, 99, INT32_MAX},
  };
  for (const auto& row : rows) {
    std::vector<uint32_t> seeds = row.seeds;
    if (row.brng == BRNG_R250) seeds.resize(250);  // the first word is the sum of two of them
    if (row.brng == BRNG_SOBOL || row.brng == BRNG_NIEDERR) seeds.resize(3 + 32);
    const auto first = [&]<class T>(auto draw, T a, T b) {
      T r = 0;
      EXPECT_EQ(draw(0, Stream(row.brng, seeds), 1, &r, a, b), RNG_OK);
      return r;
    };
    SCOPED_TRACE(&row - rows);
    EXPECT_EQ(first(_zokdRngUniform, 0.0, 1.0), row.d);
    EXPECT_EQ(first(_zoksRngUniform, 0.0f, 1.0f), row.s);
    EXPECT_EQ(first(_zokiRngUniform, 0, 100), row.percent);
    EXPECT_EQ(first(_zokiRngUniform, INT32_MAX - 1, INT32_MAX), row.far);
  }
}

TEST(UniformIntegers, AreTheFloorsOfDoubles) {
  const int32_t ranges[][2] = {{0, 10}, {-5, 5}, {-1, 0}, {INT32_MIN, INT32_MAX}};
  for (const int32_t brng : generators) {
    for (const auto& [a, b] : ranges) {
      for (const int32_t n : {-1, 0, 1, 2, 3, 4, 7, 1023, 1024, 1025, 2050}) {
        SCOPED_TRACE(testing::Message() << brng << " [" << a << ", " << b << ") " << n);
        Stream integers(brng), doubles(brng);
        std::vector<int32_t> r(2051, 99), expected(2051, 99);
        std::vector<double> x(2051);
        ASSERT_EQ(_zokiRngUniform(0, integers, n, r.data(), a, b), RNG_OK);
        if (n > 0) _zokdRngUniform(0, doubles, n, x.data(), a, b);
        for (int i = 0; i < n; ++i) expected[i] = static_cast<int32_t>(floor(x[i]));
        EXPECT_EQ(r, expected);
        EXPECT_EQ(draw_words(integers, 1), draw_words(doubles, 1));
      }
    }
  }
}

TEST(UniformIntegers, ComeInBlocksUntilAFailure) {
  Stream stream(Spy::brng());
  std::vector<int32_t> r(2500);
  EXPECT_EQ(_zokiRngUniform(RNG_ACCURATE, stream, 2500, r.data(), 100, 200), RNG_OK);
  EXPECT_EQ(r[2499], 2499) << "no clamp here";
  Spy::answer = -12;
  EXPECT_EQ(_zokiRngUniform(0, stream, 2500, r.data(), 100, 200), -12);
  EXPECT_EQ(Spy::given[0], 1024);
  Spy::answer = RNG_OK;
}

}  // namespace
