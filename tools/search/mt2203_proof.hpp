// SPDX-License-Identifier: MIT
// What every row of the table of twisters must be.
#pragma once

#include "equidistribution.hpp"
#include "mt2203_given.hpp"

namespace orv_search {

constexpr int most_mt2203_defect = 706;  // the largest of the given rows

/// Why the row is no generator of full period and good equidistribution; nullptr if it is one.
inline const char* fault_of(const CharacteristicPolynomials& polynomials, const Mt2203Row& row) {
  const Poly p = polynomials(row.matrix_a);
  if (!annihilates(p, row.matrix_a)) return "the polynomial is not that of the recurrence";
  if (!is_irreducible(p)) return "the period is not 2^2203 - 1";
  if (total_defect(p, row) > most_mt2203_defect) return "the equidistribution is poor";
  return nullptr;
}

}  // namespace orv_search
