// Modular powers, from one exponent to the next: x^2n = (x^n)^2 and x^(2n+1) = x^2n x.
#include <gtest/gtest.h>
#include <orv/zok.h>

#include <array>
#include <random>

namespace {

uint32_t low(uint64_t x) { return static_cast<uint32_t>(x); }
uint32_t high(uint64_t x) { return static_cast<uint32_t>(x >> 32); }

/// Calls `check(n)` for small exponents, and for all that a long one starts with.
template <class Check>
void for_exponents(Check check) {
  std::mt19937_64 random(1);
  for (uint64_t n = 0; n < 70; ++n) check(n);
  for (int i = 0; i < 20; ++i) {
    for (uint64_t n = random() | 1ull << 63; n != 0; n >>= 1) check(n);
  }
}

template <class Power, class Times>
void check_power(uint64_t a, uint64_t one, Power power, Times times) {
  ASSERT_EQ(power(a, 0), one);
  for_exponents([&](uint64_t n) {
    if (n == 0) return;
    const uint64_t half = power(a, n / 2), even = times(half, half);
    ASSERT_EQ(power(a, n), n % 2 == 0 ? even : times(even, a)) << a << "^" << n;
  });
}

TEST(Powers, OfNumbers) {
  constexpr uint32_t p31 = 0x7FFFFFFF;
  for (const uint32_t a : {0u, 1u, 2u, 117u, 69069u, 1132489760u, p31, 4294967295u}) {
    for (const uint32_t m : {2u, 3u, 16770647u, p31, 4294944443u, 4294967087u, 4294967295u}) {
      SCOPED_TRACE(m);
      const auto times = [m](uint64_t x, uint64_t y) { return x * y % m; };
      const auto power = [m](uint64_t x, uint64_t n) -> uint64_t {
        return __zokiPowMod(low(x), low(n), high(n), m);
      };
      check_power(a, 1, power, times);
      if (m != p31) continue;
      const auto power31 = [](uint64_t x, uint64_t n) -> uint64_t {
        return __zokiPowMod2P31M1(low(x), low(n), high(n));
      };
      check_power(a, 1, power31, times);
    }
  }
  for (const uint64_t a : {0ull, 2ull, 69069ull, 302875106592253ull, ~0ull}) {
    check_power(
        a, 1,
        [](uint64_t x, uint64_t n) { return __zokiPowMod2P59(low(x), high(x), low(n), high(n)); },
        [](uint64_t x, uint64_t y) { return x * y % (1ull << 59); });
  }
}

TEST(Powers, OfARecurrenceOfOrderThree) {
  using Vector = std::array<uint32_t, 3>;
  for (const uint32_t m : {1u, 7u, 4294967087u, 4294967295u}) {
    const uint32_t c[3] = {m - 1, 4294156359u % m, 1403580u % m};
    const auto after = [&](Vector v, uint64_t n) {
      __zokiVect3PowMod(v.data(), c, m, low(n), high(n));
      return v;
    };
    const auto step = [&](const Vector& v) -> Vector {
      uint64_t next = 0;
      for (int k = 0; k < 3; ++k) next = (next + uint64_t{c[2 - k]} * v[k] % m) % m;
      return {v[1], v[2], low(next)};
    };
    const Vector v = {5 % m, m - 1, 4000000000u % m};
    ASSERT_EQ(after(v, 0), v);
    for_exponents([&](uint64_t n) {
      if (n == 0) return;
      const Vector even = after(after(v, n / 2), n / 2);
      ASSERT_EQ(after(v, n), n % 2 == 0 ? even : step(even)) << n << " mod " << m;
    });
  }
}

}  // namespace
