// SPDX-License-Identifier: MIT
// Proves the rows of the checked-in table of twisters again: distinct, full period, total defect of
// the equidistribution at most 706. Compiled in the root of the source tree, as one line, by
//
//   g++ -std=c++20 -O3 -march=native -Iinclude tools/search/verify_mt2203_table.cpp
//       zok/_src/zok_sub_kernel/_service/_zok_mt2203_table.cpp -o verify_mt2203_table
//
//   verify_mt2203_table               all rows
//   verify_mt2203_table --sample K    K of them, evenly spread
#include <orv/zok.h>

#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>

#include "mt2203_proof.hpp"

using namespace orv_search;

namespace {

constexpr int rows_total = 1024;

Mt2203Row row_at(int number) {
  const uint32_t* row = _zok_mt2203_table[number];
  return {row[0], row[1], row[2]};
}

int check_given_and_distinct() {
  int faults = 0;
  for (const auto& [number, row] : given_mt2203_rows)
    if (row_at(number) != row) {
      std::printf("row %d is not the given one\n", number);
      ++faults;
    }
  std::set<uint32_t> seen;
  for (int i = 0; i < rows_total; ++i)
    if (!seen.insert(row_at(i).matrix_a).second) {
      std::printf("row %d has the A of an earlier row\n", i);
      ++faults;
    }
  return faults;
}

int prove(int number, const CharacteristicPolynomials& polynomials) {
  const char* fault = fault_of(polynomials, row_at(number));
  if (fault) std::printf("row %d: %s\n", number, fault);
  return fault != nullptr;
}

}  // namespace

int main(int count, char** arguments) {
  int sample = rows_total;
  if (count == 3 && std::string(arguments[1]) == "--sample") {
    sample = std::atoi(arguments[2]);
  } else if (count != 1) {
    sample = 0;
  }
  if (sample < 1 || sample > rows_total) {
    std::fprintf(stderr, "usage: verify_mt2203_table [--sample K], K from 1 to 1024\n");
    return 2;
  }
  int faults = check_given_and_distinct();
  const CharacteristicPolynomials polynomials;
  for (int i = 0; i < sample; ++i)
    faults += prove(sample == 1 ? 0 : i * (rows_total - 1) / (sample - 1), polynomials);
  std::printf("%d rows checked, %d faults\n", sample, faults);
  return faults ? 1 : 0;
}
