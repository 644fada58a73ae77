// SPDX-License-Identifier: MIT
// Equidistribution of a tempered row: k(v), the largest dimension in which the v leading output
// bits take every value equally often over the period.
#pragma once

#include <algorithm>

#include "mt2203.hpp"

namespace orv_search {

constexpr int output_bits = mt2203::w;

/// The output bits as elements of GF(2)[t]/p, the leading bit first.
using BitPolys = std::array<Poly, output_bits>;

/// Bit sequence s goes to g = the polynomial part of p times sum s(i) t^(-i-1).
inline BitPolys untempered_bits(const Poly& p, uint32_t matrix_a) {
  const std::vector<uint32_t> x = recurrence(matrix_a, Modulus::degree);
  BitPolys g{};
  for (int k = 0; k < Modulus::degree; ++k) {
    uint32_t word = 0;
    for (int j = k + 1; j <= Modulus::degree; ++j)
      word ^= x[j - k - 1] & -static_cast<uint32_t>(bit(p, j));
    for (; word; word &= word - 1) flip(g[std::countl_zero(word & -word)], k);
  }
  return g;
}

/// y ^ (y >> 12): the first step of the tempering, which no mask touches.
inline BitPolys first_step(const BitPolys& x) {
  BitPolys y = x;
  for (int i = 12; i < output_bits; ++i) y[i] = y[i] ^ x[i - 12];
  return y;
}

/// The tempering after the first step.
inline BitPolys tempered(const BitPolys& y, uint32_t b, uint32_t c) {
  const auto masked_shift = [](BitPolys z, int shift, uint32_t mask) {
    for (int i = 0; i + shift < output_bits; ++i)
      if (mask << i >> 31) z[i] = z[i] ^ z[i + shift];
    return z;
  };
  BitPolys z = masked_shift(masked_shift(y, 7, b), 15, c);
  for (int i = output_bits - 1; i >= 18; --i) z[i] = z[i] ^ z[i - 18];
  return z;
}

/// A vector of up to 32 polynomials. Words of equal index lie together, so that a shifted sum runs
/// over all coordinates at once.
struct PolyVector {
  std::vector<std::array<uint64_t, output_bits>> words;  // [word][coordinate]
  int degree = -1;                                       // the largest of the coordinates
  int pivot = -1;                                        // the first coordinate that has it

  void set(int coordinate, const Poly& p) {
    words.resize(std::max<size_t>(words.size(), poly_words));
    for (int i = 0; i < poly_words; ++i) words[i][coordinate] = p[i];
  }

  void find_pivot() {
    for (; !words.empty(); words.pop_back()) {
      uint64_t any = 0;
      for (uint64_t word : words.back()) any |= word;
      if (!any) continue;
      const int top = 63 - std::countl_zero(any);
      degree = 64 * static_cast<int>(words.size() - 1) + top;
      for (pivot = 0; !(words.back()[pivot] >> top & 1);) ++pivot;
      return;
    }
    degree = pivot = -1;
  }

  /// *this += t^shift other, whose degree is at most that of *this.
  void add_shifted(const PolyVector& other, int shift) {
    const int up = shift / 64, bits = shift % 64;
    for (int i = static_cast<int>(words.size()) - 1; i >= up; --i) {
      const int from = i - up;
      if (from < static_cast<int>(other.words.size()))
        for (int k = 0; k < output_bits; ++k) words[i][k] ^= other.words[from][k] << bits;
      if (bits && from > 0 && from <= static_cast<int>(other.words.size()))
        for (int k = 0; k < output_bits; ++k)
          words[i][k] ^= other.words[from - 1][k] >> (64 - bits);
    }
    find_pivot();
  }

  void add(const PolyVector& other) {
    if (words.size() < other.words.size()) words.resize(other.words.size());
    add_shifted(other, 0);
  }
};

/// The lattice of the relations h with sum h_i g_i = 0 modulo p among the leading output bits g_i,
/// scaled so that g_0 = 1. Its basis is kept reduced: every vector has a pivot of its own (weak
/// Popov form), so the least degree of a vector is that of the shortest relation, which is k(v).
class RelationLattice {
 public:
  explicit RelationLattice(const Poly& p) {
    PolyVector only;
    only.set(0, p);
    only.find_pivot();
    basis_[0] = std::move(only);
  }

  int dimension() const { return dimension_; }

  int k() const {
    int least = basis_[0].degree;
    for (int i = 1; i < dimension_; ++i) least = std::min(least, basis_[i].degree);
    return least;
  }

  int defect() const { return Modulus::degree / dimension_ - k(); }

  /// (g, 0, ..., 0), reduced until the basis has no vector that would shorten it.
  PolyVector reduced(const Poly& g) const {
    PolyVector r;
    r.set(0, g);
    r.find_pivot();
    while (r.pivot >= 0 && basis_[r.pivot].degree <= r.degree)
      r.add_shifted(basis_[r.pivot], r.degree - basis_[r.pivot].degree);
    return r;
  }

  /// Adds the output bit that belongs to a relation's first coordinates: (r, 1) joins the basis.
  void extend(PolyVector r) {
    if (r.words.empty()) r.words.resize(1);
    r.words[0][dimension_] = 1;
    r.find_pivot();
    while (r.pivot < dimension_) {
      PolyVector& owner = basis_[r.pivot];
      if (owner.degree > r.degree) std::swap(owner, r);
      r.add_shifted(owner, r.degree - owner.degree);
    }
    basis_[dimension_++] = std::move(r);
  }

 private:
  int dimension_ = 1;
  std::array<PolyVector, output_bits> basis_;  // by pivot
};

/// floor(2203/v) - k(v) for v = 1 to 32.
inline std::array<int, output_bits> defects(const Poly& p, const Mt2203Row& row) {
  const BitPolys g =
      tempered(first_step(untempered_bits(p, row.matrix_a)), row.temper_b, row.temper_c);
  const Modulus modulus(p);
  const Poly scale = modulus.inverse(g[0]);
  std::array<int, output_bits> defect{};
  RelationLattice lattice(p);
  for (int v = 1; v < output_bits; ++v) {
    lattice.extend(lattice.reduced(modulus.normalised(modulus.product(g[v], scale))));
    defect[v] = lattice.defect();
  }
  return defect;
}

inline int total_defect(const Poly& p, const Mt2203Row& row) {
  int sum = 0;
  for (int defect : defects(p, row)) sum += defect;
  return sum;
}

}  // namespace orv_search
