// Modular powers, from one exponent to the next: x^2n = (x^n)^2 and x^(2n+1) = x^2n x.
#include <gtest/gtest.h>
#include <orv/zok.h>

#include <array>
#include <random>

namespace {

uint32_t low(uint64_t x) { return static_cast<uint32_t>(x); }
uint32_t high(uint64_t x) { return static_cast<uint32_t>(x >> 32); }

/// Power(n) at small exponents, and at all that a long one starts with.
template <class Power, class Twice, class Step>
void check_power(Power power, Twice twice, Step step) {
  const auto check = [&](uint64_t n) {
    const auto even = twice(n / 2);
    ASSERT_EQ(power(n), n % 2 == 0 ? even : step(even)) << n;
  };
  for (uint64_t n = 1; n < 70; ++n) check(n);
  std::mt19937_64 random(1);
  for (int i = 0; i < 20; ++i) {
    for (uint64_t n = random() | 1ull << 63; n != 0; n >>= 1) check(n);
  }
}

TEST(Powers, OfNumbers) {
  constexpr uint64_t p31 = 0x7FFFFFFF, p59 = 1ull << 59;
  const uint64_t moduli[] = {2, 16770647, p31, 4294967087, 4294967295, p59};
  for (const uint64_t m : moduli) {
    for (const uint64_t a : {0ull, 1ull, 2ull, 69069ull, 0x7FFFFFFFull, 0xFFFFFFFFull, ~0ull}) {
      if (m != p59 && a > UINT32_MAX) continue;
      for (const bool own_routine : {false, true}) {
        SCOPED_TRACE(testing::Message() << a << " mod " << m);
        const auto power = [=](uint64_t n) -> uint64_t {
          if (m == p59) return __zokiPowMod2P59(low(a), high(a), low(n), high(n));
          if (m == p31 && own_routine) return __zokiPowMod2P31M1(low(a), low(n), high(n));
          return __zokiPowMod(low(a), low(n), high(n), low(m));
        };
        ASSERT_EQ(power(0), 1u);
        check_power(
            power, [&](uint64_t n) { return power(n) * power(n) % m; },
            [=](uint64_t x) { return x * a % m; });
      }
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
    ASSERT_EQ(after(v, 0), v);
    check_power([&](uint64_t n) { return after(v, n); },
                [&](uint64_t n) { return after(after(v, n), n); },
                [&](const Vector& x) -> Vector {
                  uint64_t next = 0;
                  for (int k = 0; k < 3; ++k) next = (next + uint64_t{c[2 - k]} * x[k] % m) % m;
                  return {x[1], x[2], low(next)};
                });
  }
}

}  // namespace
