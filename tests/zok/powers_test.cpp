// Modular powers against repeated multiplication, and against each other for large exponents.
#include <gtest/gtest.h>
#include <orv/zok.h>

#include <algorithm>

namespace {

constexpr uint32_t p31 = 0x7FFFFFFF;
constexpr uint64_t mask59 = (1ull << 59) - 1;

uint64_t times59(uint64_t a, uint64_t x) { return a * x & mask59; }

uint64_t power59(uint64_t a, uint64_t n) {
  return __zokiPowMod2P59(static_cast<uint32_t>(a), static_cast<uint32_t>(a >> 32),
                          static_cast<uint32_t>(n), static_cast<uint32_t>(n >> 32));
}
uint32_t power(uint32_t a, uint64_t n, uint32_t m) {
  return __zokiPowMod(a, static_cast<uint32_t>(n), static_cast<uint32_t>(n >> 32), m);
}
uint32_t power31(uint32_t a, uint64_t n) {
  return __zokiPowMod2P31M1(a, static_cast<uint32_t>(n), static_cast<uint32_t>(n >> 32));
}

TEST(Powers, SmallExponentsAreRepeatedMultiplication) {
  for (const uint32_t m : {2u, 3u, 16770647u, p31, 4294967087u, 4294967295u}) {
    for (const uint32_t a : {0u, 1u, 2u, 117u, 1132489760u, p31, 4294967295u}) {
      uint64_t expected = 1, expected31 = 1;
      EXPECT_EQ(power(a, 0, m), 1u);
      EXPECT_EQ(power31(a, 0), 1u);
      for (uint64_t n = 1; n < 70; ++n) {
        expected = expected * a % m;
        expected31 = expected31 * a % p31;
        ASSERT_EQ(power(a, n, m), expected) << a << "^" << n << " mod " << m;
        ASSERT_EQ(power31(a, n), expected31) << a << "^" << n;
      }
    }
  }
  for (const uint64_t a : {0ull, 2ull, 302875106592253ull, ~0ull}) {
    uint64_t expected = 1;
    for (uint64_t n = 0; n < 70; ++n, expected = times59(a, expected)) {
      ASSERT_EQ(power59(a, n), expected) << a << "^" << n;
    }
  }
}

TEST(Powers, LargeExponents) {
  // The multiplicative groups have p - 1 and 2^57 elements of a full period.
  EXPECT_EQ(power31(1132489760, p31 - 1), 1u);
  EXPECT_NE(power31(1132489760, (p31 - 1) / 2), 1u);
  EXPECT_EQ(power59(302875106592253, 1ull << 57), 1u);
  EXPECT_NE(power59(302875106592253, 1ull << 56), 1u);
  for (const uint64_t high : {1ull, 0x80000000ull, 0xFFFFFFFFull}) {
    // a^(h 2^32 + l) = (a^h)^(2^32) a^l
    const uint64_t n = high << 32 | 0x9ABCDEF0;
    uint64_t x = power(69069, high, 4294944443u), y = power59(69069, high);
    uint64_t z = power31(69069, high);
    for (int k = 0; k < 32; ++k) {
      x = x * x % 4294944443u;
      y = times59(y, y);
      z = z * z % p31;
    }
    EXPECT_EQ(power(69069, n, 4294944443u),
              x * power(69069, 0x9ABCDEF0, 4294944443u) % 4294944443u);
    EXPECT_EQ(power59(69069, n), times59(y, power59(69069, 0x9ABCDEF0)));
    EXPECT_EQ(power31(69069, n), z * power31(69069, 0x9ABCDEF0) % p31);
  }
}

TEST(Powers, VectorStepsARecurrenceOfOrderThree) {
  for (const uint32_t m : {1u, 7u, 4294967087u, 4294967295u}) {
    const uint32_t c[3] = {m - 1, 4294156359u % m, 1403580u % m};
    uint64_t expected[3] = {5 % m, m - 1, 4000000000u % m};
    for (uint32_t n = 0; n < 100; ++n) {
      uint32_t v[3] = {5 % m, m - 1, 4000000000u % m};
      __zokiVect3PowMod(v, c, m, n, 0);
      ASSERT_TRUE(std::equal(v, v + 3, expected)) << n << " mod " << m;
      uint64_t next = 0;
      for (int k = 0; k < 3; ++k) next = (next + c[2 - k] * expected[k] % m) % m;
      expected[0] = expected[1], expected[1] = expected[2], expected[2] = next;
    }
  }
  // Through the high word: 2^32 steps are 2^16 times 2^16.
  const uint32_t c[3] = {0, 1403580, 4294156359}, m = 4294967087;
  uint32_t far[3] = {1, 2, 3}, steps[3] = {1, 2, 3};
  __zokiVect3PowMod(far, c, m, 0, 1);
  for (int k = 0; k < 1 << 16; ++k) __zokiVect3PowMod(steps, c, m, 1 << 16, 0);
  EXPECT_TRUE(std::equal(far, far + 3, steps));
}

}  // namespace
