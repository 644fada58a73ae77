// SPDX-License-Identifier: MIT
// Rows of four moduli and multipliers for the combined congruential family.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>
#include <optional>
#include <vector>

namespace orv_search {

constexpr uint32_t wh_lowest = 16718909, wh_highest = 16776971;  // the moduli's range
constexpr uint32_t wh_least_a = 112, wh_largest_a = 127;
constexpr int wh_rows = 273;

struct WhRow {
  std::array<uint32_t, 4> a, m;
  friend bool operator==(const WhRow&, const WhRow&) = default;
};

struct GivenWhRow {
  int number;
  WhRow row;
};

constexpr GivenWhRow given_wh_rows[] = {
    {0, {{125, 117, 127, 126}, {16770647, 16770643, 16770623, 16770617}}},
    {1, {{127, 126, 125, 123}, {16770311, 16770283, 16770263, 16770209}}},
    {2, {{125, 119, 123, 126}, {16769807, 16769771, 16769749, 16769663}}},
    {272, {{126, 127, 125, 124}, {16766363, 16766359, 16766327, 16766231}}},
};

inline std::vector<uint32_t> prime_factors(uint32_t n) {
  std::vector<uint32_t> list;
  for (uint32_t d = 2; d * d <= n; ++d)
    for (; n % d == 0; n /= d)
      if (list.empty() || list.back() != d) list.push_back(d);
  if (n > 1) list.push_back(n);
  return list;
}

inline bool is_prime(uint32_t n) { return prime_factors(n) == std::vector{n}; }

inline uint32_t power_mod(uint64_t a, uint32_t n, uint32_t m) {
  uint64_t r = 1;
  for (; n; n >>= 1, a = a * a % m)
    if (n & 1) r = r * a % m;
  return static_cast<uint32_t>(r);
}

/// Does a have the order m - 1 modulo the prime m?
inline bool is_primitive_root(uint32_t a, uint32_t m) {
  for (uint32_t q : prime_factors(m - 1))
    if (power_mod(a, (m - 1) / q, m) == 1) return false;
  return a % m != 0;
}

/// The row that a first modulus leads to: down through the primes, those whose (m - 1)/2 is coprime
/// to those kept, each with the largest primitive root that the row does not use yet. Its period is
/// then twice the product of the four (m - 1)/2.
inline std::optional<WhRow> wh_row_from(uint32_t first) {
  WhRow row{};
  int kept = 0;
  for (uint32_t m = first; m >= wh_lowest; --m) {
    bool fits = is_prime(m);
    for (int k = 0; k < kept; ++k) fits &= std::gcd((m - 1) / 2, (row.m[k] - 1) / 2) == 1;
    if (!fits) continue;
    uint32_t a = wh_largest_a;
    const auto used = [&] { return std::find(row.a.begin(), row.a.end(), a) != row.a.end(); };
    while (a >= wh_least_a && (used() || !is_primitive_root(a, m))) --a;
    if (a < wh_least_a) return std::nullopt;
    row.a[kept] = a;
    row.m[kept] = m;
    if (++kept == 4) return row;
  }
  return std::nullopt;
}

}  // namespace orv_search
