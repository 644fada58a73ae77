// SPDX-License-Identifier: MIT
// Proves the checked-in tables of quasi-random sequences: Sobol's polynomials are distinct and
// primitive, his initial numbers odd and small enough and their sequence has property A in all
// dimensions; Niederreiter's polynomials are the first irreducible ones. Tells where property A'
// holds as well.
#include <orv/zok.h>

#include <cstdio>
#include <set>

#include "quasi_proof.hpp"

using namespace orv_search;

namespace {

int faults = 0;

void expect(bool holds, const char* what, int dimension) {
  if (holds) return;
  std::printf("dimension %d: %s\n", dimension, what);
  ++faults;
}

std::vector<std::vector<uint64_t>> prove_polynomials_and_numbers() {
  std::vector<std::vector<uint64_t>> m = {sobol_numbers(1, nullptr)};
  std::set<uint32_t> seen;
  for (int k = 0; k < 39; ++k) {
    const uint32_t p = uSobolIrredPoly[k];
    expect(is_primitive(p), "the polynomial is not primitive", k + 2);
    expect(seen.insert(p).second, "an earlier dimension has the polynomial", k + 2);
    expect(iSobolIrredPolyDeg[k] == degree_of(p), "the degree is wrong", k + 2);
    for (int j = 0; j < degree_of(p); ++j) {
      const uint32_t number = uSobolMInit[k][j];
      expect(number % 2 == 1 && number < 2u << j, "an initial number is even or too large", k + 2);
    }
    m.push_back(sobol_numbers(p, uSobolMInit[k]));
  }
  return m;
}

}  // namespace

int main() {
  const auto m = prove_polynomials_and_numbers();
  std::printf("property A' holds in dimensions");
  for (int dims = 1; dims <= 40; ++dims) {
    expect(has_property(m, dims, 1), "property A does not hold", dims);
    if (dims <= 32 && has_property(m, dims, 2)) std::printf(" %d", dims);
  }
  std::printf(" of 1 to 32\n");

  const auto irreducible = irreducible_polynomials(11);
  for (int d = 0; d < 318; ++d) {
    expect(uNiederrIrredPoly[d] == irreducible[d], "not the next irreducible polynomial", d + 1);
    expect(iNiederrIrredPolyDeg[d] == degree_of(irreducible[d]), "the degree is wrong", d + 1);
  }
  std::printf("40 and 318 dimensions checked, %d faults\n", faults);
  return faults == 0 ? 0 : 1;
}
