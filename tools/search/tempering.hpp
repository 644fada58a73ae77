// SPDX-License-Identifier: MIT
// The search for the tempering masks of a row.
#pragma once

#include <algorithm>
#include <optional>

#include "equidistribution.hpp"

namespace orv_search {

/// Chooses mask bits output bit by output bit, the one with the least defect first, and goes back
/// where the total can no longer stay within the limit. Bit p from the top of the output depends
/// on bits p of both masks and, if that of C is set, on bit p + 15 of B.
class TemperingSearch {
 public:
  TemperingSearch(const Poly& p, uint32_t matrix_a)
      : p_(p), unscaled_(first_step(untempered_bits(p, matrix_a))), row_{matrix_a, 0, 0} {}

  /// The best masks with a total defect of at most `limit` among the first `nodes` lattices.
  std::optional<Mt2203Row> best(int limit, int nodes) {
    limit_ = limit;
    nodes_ = nodes;
    const Modulus modulus(p_);
    for (const Masks& masks : options({}, 0)) {
      const Poly scale = modulus.inverse(output_bit(unscaled_, masks, 0));
      for (int i = 0; i < output_bits; ++i)
        scaled_[i] = modulus.normalised(modulus.product(unscaled_[i], scale));
      descend(RelationLattice(p_), masks, 1, 0);
    }
    return found_ ? std::optional(row_) : std::nullopt;
  }

  int total() const { return limit_ + 1; }
  int nodes_left() const { return nodes_; }

 private:
  struct Masks {
    uint32_t b = 0, c = 0, decided = 0;  // decided: the bits of B that are no longer free
  };

  struct Node {
    Masks masks;
    RelationLattice lattice;
  };

  static uint32_t bit_from_top(int i) { return i < output_bits ? 0x80000000u >> i : 0; }

  /// The masks with the bits chosen that output bit `i` depends on. Bits that a shift makes void
  /// stay 0.
  static std::vector<Masks> options(const Masks& masks, int i) {
    constexpr uint32_t b_bits = ~0u << 7, c_bits = ~0u << 15;
    const uint32_t own = bit_from_top(i), far = bit_from_top(i + 15);
    std::vector<Masks> list;
    for (int choice = 0; choice < 8; ++choice) {
      Masks next = masks;
      if (choice & 1) next.b |= own & b_bits & ~masks.decided;
      if (choice & 2) next.c |= own & c_bits;
      if (choice & 4 && next.c & own) next.b |= far & b_bits & ~masks.decided;
      next.decided |= own | (next.c & own ? far : 0);
      const auto same = [&](const Masks& m) { return m.b == next.b && m.c == next.c; };
      if (std::none_of(list.begin(), list.end(), same)) list.push_back(next);
    }
    return list;
  }

  /// The sum of those of four terms that make output bit `i`.
  template <class Term, class Add>
  static Term combine(const std::array<Term, 4>& terms, const Masks& masks, int i, Add add) {
    Term r = terms[0];
    if (masks.b & bit_from_top(i)) add(r, terms[1]);
    if (masks.c & bit_from_top(i)) {
      add(r, terms[2]);
      if (masks.b & bit_from_top(i + 15)) add(r, terms[3]);
    }
    return r;
  }

  static std::array<Poly, 4> terms(const BitPolys& y, int i) {
    const auto at = [&](int k) { return k < output_bits ? y[k] : Poly{}; };
    return {y[i], at(i + 7), at(i + 15), at(i + 22)};
  }

  static Poly output_bit(const BitPolys& y, const Masks& masks, int i) {
    return combine(terms(y, i), masks, i, [](Poly& r, const Poly& t) { r = r ^ t; });
  }

  void descend(const RelationLattice& lattice, const Masks& masks, int i, int total) {
    if (i == output_bits) {
      found_ = true;
      limit_ = total - 1;
      row_.temper_b = masks.b;
      row_.temper_c = masks.c;
      return;
    }
    std::array<PolyVector, 4> reduced;
    const std::array<Poly, 4> unreduced = terms(scaled_, i);
    for (int k = 0; k < 4; ++k) reduced[k] = lattice.reduced(unreduced[k]);

    std::vector<Node> nodes;
    for (const Masks& next : options(masks, i)) {
      if (nodes_ == 0) return;
      --nodes_;
      Node node{next, lattice};
      node.lattice.extend(
          combine(reduced, next, i, [](PolyVector& r, const PolyVector& t) { r.add(t); }));
      nodes.push_back(std::move(node));
    }
    std::stable_sort(nodes.begin(), nodes.end(),
                     [](const Node& a, const Node& b) { return a.lattice.k() > b.lattice.k(); });
    for (const Node& node : nodes) {
      const int sum = total + node.lattice.defect();
      if (sum + least_from_[i + 1] <= limit_) descend(node.lattice, node.masks, i + 1, sum);
    }
  }

  /// The least defects at v = 1 to 32 among the given rows, which few rows beat: the sums from
  /// v = i + 1 on.
  static constexpr std::array<int, output_bits + 1> least_from_ = [] {
    constexpr int least[] = {0,  0,  29, 0,  26, 22, 36, 0,  34, 13, 54, 44, 30, 19, 8, 0,
                             58, 53, 46, 41, 35, 31, 26, 22, 19, 15, 12, 9,  6,  5,  3, 0};
    std::array<int, output_bits + 1> sum{};
    for (int i = output_bits - 1; i >= 0; --i) sum[i] = sum[i + 1] + least[i];
    return sum;
  }();

  Poly p_;
  BitPolys unscaled_, scaled_;  // scaled: divided by output bit 0
  Mt2203Row row_;
  int limit_ = 0, nodes_ = 0;
  bool found_ = false;
};

}  // namespace orv_search
