// SPDX-License-Identifier: MIT
// Rules out most A before the proof: their polynomial has a factor of small degree.
#pragma once

#include <vector>

#include "mt2203.hpp"

namespace orv_search {

class Sieve {
 public:
  explicit Sieve(const CharacteristicPolynomials& polynomials) {
    for (uint32_t q = 2; q < 2u << most_degree; ++q)
      if (is_irreducible_small(q)) divisors_.emplace_back(polynomials, q);
  }

  bool has_small_factor(uint32_t matrix_a) const {
    for (const Divisor& q : divisors_)
      if (q.residue(matrix_a) == 0) return true;
    return false;
  }

 private:
  static constexpr int most_degree = 12;

  /// The residue of the characteristic polynomial is affine in the bits of A: a table a byte.
  struct Divisor {
    Divisor(const CharacteristicPolynomials& polynomials, uint32_t q) : table{} {
      for (int byte = 0; byte < 4; ++byte) {
        table[byte][0] = byte ? 0 : remainder(polynomials.constant(), q);
        for (int i = 0; i < 8; ++i) {
          const uint16_t term = remainder(polynomials.coefficient(8 * byte + i), q);
          for (int low = 0; low < 1 << i; ++low)
            table[byte][low | 1 << i] = table[byte][low] ^ term;
        }
      }
    }

    uint32_t residue(uint32_t a) const {
      return table[0][a & 255] ^ table[1][a >> 8 & 255] ^ table[2][a >> 16 & 255] ^
             table[3][a >> 24];
    }

    uint16_t table[4][256];
  };

  static uint16_t remainder(const Poly& p, uint32_t q) {
    const int shift = std::bit_width(q) - 1;
    uint32_t r = 0;
    for (int k = 64 * poly_words - 1; k >= 0; --k) {
      r = r << 1 | bit(p, k);
      if (r >> shift) r ^= q;
    }
    return static_cast<uint16_t>(r);
  }

  static bool is_irreducible_small(uint32_t q) {
    for (uint32_t d = 2; 2 * (std::bit_width(d) - 1) < std::bit_width(q); ++d) {
      uint32_t r = q;
      while (std::bit_width(r) >= std::bit_width(d))
        r ^= d << (std::bit_width(r) - std::bit_width(d));
      if (r == 0) return false;
    }
    return true;
  }

  std::vector<Divisor> divisors_;
};

}  // namespace orv_search
