// The uniform distributions over any generator: what they make of its numbers.
#include <math.h>

#include <vector>

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
    for (int32_t n = 1; n < 20; ++n) {
      Spy::state(stream).next = 0;
      std::vector<T> r(n + 1, T(99));
      ASSERT_EQ(uniform(method, stream, n, r.data(), T(2.5), T(11)), RNG_OK);
      EXPECT_EQ(Spy::a, 2.5);
      EXPECT_EQ(Spy::b, 11);
      for (int k = 0; k < n; ++k) {
        const T x = static_cast<T>(k);
        EXPECT_EQ(r[k], !accurate ? x : fmin(fmax(x, T(2.5)), T(11))) << method << " of " << n;
      }
      EXPECT_EQ(r[n], T(99));
    }
  }
}

TYPED_TEST(Uniform, FailuresAndEmptyRequestsAreHandedOn) {
  using T = TypeParam;
  Stream stream(Spy::brng());
  T r[3] = {};
  Spy::answer = RNG_QRNG_EXHAUSTED;
  EXPECT_EQ(uniform(RNG_ACCURATE, stream, 3, r, T(5), T(6)), RNG_QRNG_EXHAUSTED);
  EXPECT_EQ(r[2], T(2)) << "as the generator left it";
  Spy::answer = 7;
  for (const int32_t n : {0, -1}) {
    EXPECT_EQ(uniform(RNG_ACCURATE, stream, n, r, T(5), T(6)), 7);
    EXPECT_EQ(Spy::n, n);
  }
  Spy::answer = RNG_OK;
  EXPECT_EQ(r[0], T(0));
}

TEST(UniformBits, AreTheGeneratorsOwnWords) {
  Stream stream(Spy::brng());
  uint32_t r[2];
  Spy::answer = -9;
  EXPECT_EQ(_zokiRngUniformBits(RNG_ACCURATE, stream, 2, r), -9);
  EXPECT_EQ(Spy::n, 2);
  EXPECT_EQ(r[1], 1u);
  Spy::answer = RNG_OK;
}

TEST(UniformIntegers, AreTheFloorsOfDoubles) {
  const int32_t ranges[][2] = {{0, 10}, {-5, 5}, {-1, 0}, {INT32_MIN, INT32_MAX}};
  for (const Generator& g : generators) {
    for (const auto& [a, b] : ranges) {
      for (const int32_t n : {1, 2, 3, 4, 7, 1023, 1024, 1025, 2050}) {
        SCOPED_TRACE(testing::Message() << g.name << " [" << a << ", " << b << ") " << n);
        Stream integers(g.brng), doubles(g.brng);
        std::vector<int32_t> r(n + 1, 99);
        std::vector<double> x(n);
        ASSERT_EQ(_zokiRngUniform(0, integers, n, r.data(), a, b), RNG_OK);
        ASSERT_EQ(_zokdRngUniform(0, doubles, n, x.data(), a, b), RNG_OK);
        for (int i = 0; i < n; ++i) {
          ASSERT_EQ(r[i], static_cast<int32_t>(floor(x[i])));
          ASSERT_TRUE(r[i] >= a && r[i] < b);
        }
        EXPECT_EQ(r[n], 99);
      }
    }
  }
}

TEST(UniformIntegers, ComeInBlocksUntilAFailure) {
  Stream stream(Spy::brng());
  std::vector<int32_t> r(3000, -1);
  ASSERT_EQ(_zokiRngUniform(RNG_ACCURATE, stream, 2500, r.data(), 100, 200), RNG_OK);
  EXPECT_EQ(Spy::n, 2500 - 2048);
  EXPECT_EQ(Spy::a, 100);
  EXPECT_EQ(Spy::b, 200);
  EXPECT_EQ(r[0], 0) << "no clamp here";
  EXPECT_EQ(r[2499], 2499);
  Spy::answer = -12;
  EXPECT_EQ(_zokiRngUniform(0, stream, 2500, r.data(), 100, 200), -12);
  Spy::answer = RNG_OK;
  EXPECT_EQ(Spy::n, 1024);
  EXPECT_EQ(r[0], 0);
  EXPECT_EQ(_zokiRngUniform(0, stream, 0, r.data(), 100, 200), RNG_OK);
}

}  // namespace
