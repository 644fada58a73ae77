// SPDX-License-Identifier: MIT
// Modular powers, from x^0 and x^1 to all others: x^(m+n) = x^m x^n.
#include <gtest/gtest.h>
#include <orv/zok.h>

#include <array>
#include <random>

namespace {

uint32_t low(uint64_t x) { return static_cast<uint32_t>(x); }
uint32_t high(uint64_t x) { return static_cast<uint32_t>(x >> 32); }

/// `further(power(m), n)` is power(m + n), for exponents of every length.
template <class Power, class Further>
void expect_additive(Power power, Further further) {
  std::mt19937_64 random(1);
  for (int k = 0; k < 640; ++k) {
    const uint64_t m = random() >> (1 + k % 63), n = random() >> (1 + random() % 63);
    ASSERT_EQ(power(m + n), further(power(m), n)) << m << " + " << n;
  }
  for (uint64_t n = 0; n < 70; ++n) ASSERT_EQ(power(n + 1), further(power(n), 1)) << n;
}

TEST(Powers, OfNumbers) {
  constexpr uint64_t p31 = 0x7FFFFFFF, p59 = 1ull << 59;
  for (const uint64_t m : std::initializer_list<uint64_t>{2, 16770647, p31, 4294967087, ~0u, p59}) {
    for (const uint64_t a : {0ull, 1ull, 2ull, 69069ull, 0x7FFFFFFFull, 0xFFFFFFFFull, ~0ull}) {
      if (m != p59 && a > UINT32_MAX) continue;
      SCOPED_TRACE(testing::Message() << a << " mod " << m);
      const auto power = [=](uint64_t n) -> uint64_t {
        if (m == p59) return __zokiPowMod2P59(low(a), high(a), low(n), high(n));
        const uint32_t general = __zokiPowMod(low(a), low(n), high(n), low(m));
        EXPECT_TRUE(m != p31 || __zokiPowMod2P31M1(low(a), low(n), high(n)) == general) << n;
        return general;
      };
      ASSERT_EQ(power(0), 1u);
      ASSERT_EQ(power(1), a % m);
      expect_additive(power, [=](uint64_t x, uint64_t n) { return x * power(n) % m; });
    }
  }
}

TEST(Powers, OfARecurrenceOfOrderThree) {
  using Vector = std::array<uint32_t, 3>;
  for (const uint32_t m : {1u, 7u, 4294967087u, 4294967295u}) {
    const uint32_t c[3] = {m - 1, 4294156359u % m, 1403580u % m};
    const Vector v = {5 % m, m - 1, 4000000000u % m};
    const auto after = [&](Vector x, uint64_t n) {
      __zokiVect3PowMod(x.data(), c, m, low(n), high(n));
      return x;
    };
    uint64_t next = 0;
    for (int k = 0; k < 3; ++k) next = (next + uint64_t{c[2 - k]} * v[k] % m) % m;
    ASSERT_EQ(after(v, 0), v);
    ASSERT_EQ(after(v, 1), (Vector{v[1], v[2], low(next)}));
    expect_additive([&](uint64_t n) { return after(v, n); }, after);
  }
}

}  // namespace
