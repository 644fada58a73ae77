// SPDX-License-Identifier: MIT
// The tables that were found by search are what their generators need.
#include <gtest/gtest.h>
#include <orv/zok.h>
#include <tools/search/mt2203_proof.hpp>
#include <tools/search/quasi_proof.hpp>
#include <tools/search/wh_rows.hpp>

#include <set>

using namespace orv_search;

namespace {

WhRow wh_row(int i) {
  WhRow row;
  std::copy_n(_zok_WH_A[i], 4, row.a.begin());
  std::copy_n(_zok_WH_M[i], 4, row.m.begin());
  return row;
}

Mt2203Row mt2203_row(int i) {
  const uint32_t* row = _zok_mt2203_table[i];
  return {row[0], row[1], row[2]};
}

// The row that the first modulus leads to has primitive roots of coprime (m - 1) / 2.
TEST(WhTable, HasGivenRowsAndFullPeriods) {
  for (const auto& [number, row] : given_wh_rows) EXPECT_EQ(wh_row(number), row) << number;
  std::set<uint32_t> moduli;
  for (int i = 0; i < wh_rows; ++i) {
    const WhRow row = wh_row(i);
    EXPECT_EQ(wh_row_from(row.m[0]), row) << i;
    for (int k = 0; k < 4; ++k) {
      EXPECT_TRUE(moduli.insert(row.m[k]).second) << i;
      EXPECT_EQ(_zokdWH_IM_Tab[i][k], 1.0 / row.m[k]) << i;
    }
  }
  EXPECT_EQ(*moduli.begin(), wh_lowest);
  EXPECT_EQ(*moduli.rbegin(), wh_highest);
}

// verify_mt2203_table proves all rows.
TEST(Mt2203Table, HasGivenAndDistinctRowsOfWhichASampleIsProven) {
  for (const auto& [number, row] : given_mt2203_rows) EXPECT_EQ(mt2203_row(number), row) << number;
  std::set<uint32_t> seen;
  for (int i = 0; i < 1024; ++i) EXPECT_TRUE(seen.insert(mt2203_row(i).matrix_a).second) << i;

  const CharacteristicPolynomials polynomials;
  for (int i : {0, 3, 511, 1022, 1023}) {
    EXPECT_EQ(fault_of(polynomials, mt2203_row(i)), nullptr) << i;
  }
  const auto [a, b, c] = given_mt2203_rows[0].row;
  EXPECT_STREQ(fault_of(polynomials, {a ^ 2, b, c}), "the period is not 2^2203 - 1");
  EXPECT_STREQ(fault_of(polynomials, {a, b, c ^ 1u << 30}), "the equidistribution is poor");
}

TEST(SobolTables, HavePrimitivePolynomialsAndPropertyAInAllDimensions) {
  std::vector<std::vector<uint64_t>> m = {sobol_numbers(1, nullptr)};
  std::set<uint32_t> seen;
  for (int k = 0; k < 39; ++k) {
    const uint32_t p = uSobolIrredPoly[k];
    EXPECT_TRUE(is_primitive(p) && seen.insert(p).second) << k;
    EXPECT_EQ(iSobolIrredPolyDeg[k], degree_of(p));
    m.push_back(sobol_numbers(p, uSobolMInit[k]));
    for (int j = 0; j < 8; ++j) {
      const uint32_t number = uSobolMInit[k][j];
      EXPECT_TRUE(j < degree_of(p) ? number % 2 == 1 && number < 2u << j : number == 0) << k;
    }
  }
  for (int dims = 1; dims <= 40; ++dims) EXPECT_TRUE(has_property(m, dims, 1)) << dims;
  for (int dims = 1; dims <= 32; ++dims) {
    EXPECT_EQ(has_property(m, dims, 2), dims <= 6 || dims == 32) << dims;
  }
  const uint32_t before[] = {1, 1, 5, 5, 1, 27, 33};  // 27 has been mended
  m[20] = sobol_numbers(uSobolIrredPoly[19], before);
  EXPECT_FALSE(has_property(m, 21, 1));
}

TEST(NiederrTables, AreTheFirstIrreduciblePolynomials) {
  const std::vector<uint32_t> irreducible = irreducible_polynomials(11);
  for (int d = 0; d < 318; ++d) {
    EXPECT_EQ(uNiederrIrredPoly[d], irreducible[d]);
    EXPECT_EQ(iNiederrIrredPolyDeg[d], degree_of(irreducible[d]));
  }
}

}  // namespace
