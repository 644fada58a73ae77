// SPDX-License-Identifier: MIT
// The twister family of period 2^2203 - 1: its recurrence, its characteristic polynomial and the
// proof of a row's period.
#pragma once

#include <vector>

#include "gf2_poly.hpp"

namespace orv_search {

namespace mt2203 {
constexpr int w = 32, n = 69, m = 34, r = 5;
constexpr int period_exponent = n * w - r;
static_assert(period_exponent == Modulus::degree);
}  // namespace mt2203

struct Mt2203Row {
  uint32_t matrix_a, temper_b, temper_c;
  friend bool operator==(const Mt2203Row&, const Mt2203Row&) = default;
};

/// The words of the recurrence before tempering, from a state that is never zero.
inline std::vector<uint32_t> recurrence(uint32_t matrix_a, int count) {
  using namespace mt2203;
  constexpr uint32_t lower = (1u << r) - 1;
  std::vector<uint32_t> x(count + n);
  for (int i = 0; i < n; ++i) x[i] = 69069u * (i + 1) ^ (i ? x[i - 1] * 1664525u : 0x80000000u);
  for (int i = 0; i < count; ++i) {
    const uint32_t y = (x[i] & ~lower) | (x[i + 1] & lower);
    x[i + n] = x[i + m] ^ (y >> 1) ^ (y & 1 ? matrix_a : 0);
  }
  x.erase(x.begin(), x.begin() + n);
  return x;
}

/// The characteristic polynomial is affine in the bits of A. With u = t^n + t^m and
/// v = t^(n-1) + t^(m-1) it is u^(w-r) v^r + sum of a_i u^(w-r) v^(r-1-i) for i < r
/// + sum of a_i u^(w-1-i) for the others.
class CharacteristicPolynomials {
 public:
  CharacteristicPolynomials() {
    using namespace mt2203;
    Poly power{1};  // of u
    for (int i = w - 1; i >= r; --i) {
      coefficient_[i] = power;
      power = times_binomial(power, n);
    }
    for (int i = r - 1; i >= 0; --i) {
      coefficient_[i] = power;
      power = times_binomial(power, n - 1);
    }
    constant_ = power;
  }

  const Poly& constant() const { return constant_; }
  const Poly& coefficient(int i) const { return coefficient_[i]; }

  Poly operator()(uint32_t matrix_a) const {
    Poly p = constant_;
    for (int i = 0; i < mt2203::w; ++i)
      if (matrix_a >> i & 1) p = p ^ coefficient_[i];
    return p;
  }

 private:
  /// p (t^k + t^(k - n + m))
  static Poly times_binomial(const Poly& p, int k) {
    Poly r{};
    add_shifted(r, p, k);
    add_shifted(r, p, k - mt2203::n + mt2203::m);
    return r;
  }

  Poly constant_;
  std::array<Poly, mt2203::w> coefficient_;
};

/// Does p annihilate the recurrence? The words sum p_k x(i + k) obey the recurrence too, so n of
/// them that are zero prove it for the whole period.
inline bool annihilates(const Poly& p, uint32_t matrix_a) {
  const std::vector<uint32_t> x = recurrence(matrix_a, Modulus::degree + mt2203::n);
  for (int i = 0; i < mt2203::n; ++i) {
    uint32_t sum = 0;
    for (int k = 0; k <= Modulus::degree; ++k)
      if (bit(p, k)) sum ^= x[i + k];
    if (sum) return false;
  }
  return true;
}

/// Since 2203 is prime and x does not divide p, nor x + 1, p is irreducible exactly if
/// x^(2^2203) = x modulo p. Since 2^2203 - 1 is prime too, x then has this order: the period.
inline bool is_irreducible(const Poly& p) {
  if (degree(p) != Modulus::degree || !bit(p, 0)) return false;
  int terms = 0;
  for (uint64_t word : p) terms += std::popcount(word);
  if (terms % 2 == 0) return false;

  const Modulus modulus(p);
  const Poly x{2};
  Poly power = x;
  for (int i = 0; i < Modulus::degree; ++i) power = modulus.square(power);
  return modulus.normalised(power) == x;
}

}  // namespace orv_search
