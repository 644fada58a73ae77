// SPDX-License-Identifier: MIT
// What proves the tables of quasi-random sequences. Polynomials over GF(2) are numbers, coefficient
// k in bit k.
#pragma once

#include <bit>
#include <cstdint>
#include <vector>

namespace orv_search {

inline int degree_of(uint64_t p) { return static_cast<int>(std::bit_width(p)) - 1; }

/// A polynomial is primitive if the powers of x modulo it run through all that there are.
inline bool is_primitive(uint32_t p) {
  const int degree = degree_of(p);
  const uint64_t all = (uint64_t{1} << degree) - 1;
  uint64_t power = 1, order = 0;
  do {
    power <<= 1;
    if (power >> degree & 1) power ^= p;
    ++order;
  } while (power > 1 && order <= all);
  return power == 1 && order == all;
}

/// All irreducible polynomials up to a degree, in the order of their numbers: what is no product.
inline std::vector<uint32_t> irreducible_polynomials(int most_degree) {
  std::vector<bool> composite(size_t{2} << most_degree);
  for (uint32_t a = 2; degree_of(a) * 2 <= most_degree; ++a) {
    for (uint32_t b = a; degree_of(a) + degree_of(b) <= most_degree; ++b) {
      uint32_t product = 0;
      for (int k = 0; k <= degree_of(b); ++k) product ^= (b >> k & 1) * (a << k);
      composite[product] = true;
    }
  }
  std::vector<uint32_t> irreducible;
  for (uint32_t p = 2; p < composite.size(); ++p) {
    if (!composite[p]) irreducible.push_back(p);
  }
  return irreducible;
}

/// The numbers m(0) to m(63) of a dimension, m(j) below 2^(j + 1), from a primitive polynomial and
/// as many numbers as its degree; of the first dimension, without a polynomial, all are 1.
inline std::vector<uint64_t> sobol_numbers(uint32_t polynomial, const uint32_t* initial) {
  const int degree = degree_of(polynomial);
  std::vector<uint64_t> m(64, 1);
  for (int j = 0; degree > 0 && j < 64; ++j) {
    if (j < degree) {
      m[j] = initial[j];
      continue;
    }
    m[j] = m[j - degree];
    for (int i = 0; i < degree; ++i) {
      if (polynomial >> i & 1) m[j] ^= m[j - degree + i] << (degree - i);
    }
  }
  return m;
}

/// Property A (bits = 1) and A' (bits = 2) of Sobol: of 2^(bits d) points from a multiple of that
/// many on, each of the cubes that `bits` halvings of all d dimensions make has one; that is, the
/// leading bits of the first numbers are a matrix of full rank. It takes up to 64 numbers.
inline bool has_property(const std::vector<std::vector<uint64_t>>& m, int dims, int bits) {
  const int size = dims * bits;
  std::vector<uint64_t> rows;
  for (int d = 0; d < dims; ++d) {
    for (int b = 0; b < bits; ++b) {
      uint64_t row = 0;
      for (int j = b; j < size; ++j) row |= (m[d][j] >> (j - b) & 1) << j;
      rows.push_back(row);
    }
  }
  for (size_t i = 0; i < rows.size(); ++i) {
    if (rows[i] == 0) return false;
    const uint64_t pivot = rows[i] & (~rows[i] + 1);
    for (size_t k = i + 1; k < rows.size(); ++k) {
      if (rows[k] & pivot) rows[k] ^= rows[i];
    }
  }
  return true;
}

}  // namespace orv_search
