// SPDX-License-Identifier: MIT
// Finds the rows of the table of the twister family of period 2^2203 - 1.
//
//   g++ -std=c++20 -O3 -march=native find_mt2203_table.cpp -o find_mt2203_table
//   find_mt2203_table ROWS [FIRST END]    appends the rows FIRST <= row < END that ROWS lacks
//   find_mt2203_table --table ROWS...     writes the C++ table from complete files of rows
//
// A file of rows has a line "row A B C defect" a row. Every row depends on its number alone, so a
// run can be stopped at any time, continued, or split into ranges with a file each.
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "mt2203_proof.hpp"
#include "sieve.hpp"
#include "tempering.hpp"

using namespace orv_search;

namespace {

constexpr int rows_total = 1024;
constexpr int most_lattices = 2000;

struct Found {
  Mt2203Row row;
  int defect;
};
using Rows = std::map<int, Found>;

[[noreturn]] void fail(const std::string& what) {
  std::fprintf(stderr, "find_mt2203_table: %s\n", what.c_str());
  std::exit(2);
}

void read_rows(const std::string& path, Rows& rows) {
  std::FILE* file = std::fopen(path.c_str(), "r");
  if (!file) return;
  int number, length;
  Found found;
  char line[200];
  while (std::fgets(line, sizeof line, file)) {
    const int fields = std::sscanf(line, "%d %" SCNx32 " %" SCNx32 " %" SCNx32 " %d%n", &number,
                                   &found.row.matrix_a, &found.row.temper_b, &found.row.temper_c,
                                   &found.defect, &length);
    if (fields != 5 || line[length] != '\n' || number < 0 || number >= rows_total)
      fail(path + " has a broken line: " + line);
    rows[number] = found;
  }
  std::fclose(file);
}

/// Candidate `index` for A in a row: the top bit is 1, the low ten are the row's number, so that
/// no two rows try the same, and those between come from a mixed counter.
uint32_t candidate(int row, uint32_t index) {
  uint64_t z = static_cast<uint64_t>(row) << 32 | index;
  z = (z ^ z >> 31) * 0xD1342543DE82EF95u + 0x9E3779B97F4A7C15u;
  z = (z ^ z >> 29) * 0xAF251AF3B0F025B5u;
  return 0x80000000u | static_cast<uint32_t>(z >> 43 << 10) | static_cast<uint32_t>(row);
}

Found find_row(const CharacteristicPolynomials& polynomials, const Sieve& sieve, int number) {
  for (uint32_t index = 0;; ++index) {
    const uint32_t a = candidate(number, index);
    if (sieve.has_small_factor(a)) continue;
    const Poly p = polynomials(a);
    if (!is_irreducible(p)) continue;
    TemperingSearch search(p, a);
    if (const auto row = search.best(most_mt2203_defect, most_lattices))
      return {*row, search.total()};
  }
}

void append_rows(const std::string& path, int first, int end) {
  const CharacteristicPolynomials polynomials;
  Rows rows;
  for (const auto& [number, row] : given_mt2203_rows) {
    const Poly p = polynomials(row.matrix_a);
    if (!is_irreducible(p)) fail("given row " + std::to_string(number) + " has no full period");
    rows[number] = {row, total_defect(p, row)};
    std::printf("given row %d: full period, defect %d\n", number, rows[number].defect);
  }
  const Rows given = rows;
  rows.clear();
  read_rows(path, rows);

  const Sieve sieve(polynomials);
  std::FILE* file = std::fopen(path.c_str(), "a");
  if (!file) fail("cannot write " + path);
  for (int number = first; number < end; ++number) {
    if (rows.contains(number)) continue;
    const auto known = given.find(number);
    const Found found = known != given.end() ? known->second : find_row(polynomials, sieve, number);
    std::fprintf(file, "%d %08" PRIX32 " %08" PRIX32 " %08" PRIX32 " %d\n", number,
                 found.row.matrix_a, found.row.temper_b, found.row.temper_c, found.defect);
    if (std::fflush(file)) fail("cannot write " + path);
  }
  std::fclose(file);
}

void write_table(const std::vector<std::string>& paths) {
  Rows rows;
  std::string names;
  for (const std::string& path : paths) {
    read_rows(path, rows);
    names += " " + path;
  }
  if (rows.size() != rows_total) fail(std::to_string(rows.size()) + " rows of 1024 are there");
  std::printf("// Made by: tools/search/find_mt2203_table --table%s\n", names.c_str());
  std::printf("// clang-format off\n#include <orv/zok.h>\n\n");
  std::printf("// MatrixA, TemperB, TemperC of each sub-generator.\n");
  std::printf("const uint32_t _zok_mt2203_table[1024][3] = {\n");
  for (const auto& [number, found] : rows)
    std::printf("    {0x%08" PRIX32 ", 0x%08" PRIX32 ", 0x%08" PRIX32 "},\n", found.row.matrix_a,
                found.row.temper_b, found.row.temper_c);
  std::printf("};\n");
}

}  // namespace

int main(int count, char** arguments) {
  const std::vector<std::string> words(arguments + 1, arguments + count);
  if (words.size() >= 2 && words[0] == "--table") {
    write_table({words.begin() + 1, words.end()});
  } else if (words.size() == 1 || words.size() == 3) {
    const int first = words.size() == 3 ? std::atoi(words[1].c_str()) : 0;
    const int end = words.size() == 3 ? std::atoi(words[2].c_str()) : rows_total;
    if (first < 0 || end > rows_total || first > end) fail("rows go from 0 to 1024");
    append_rows(words[0], first, end);
  } else {
    fail("usage: find_mt2203_table ROWS [FIRST END] or --table ROWS...");
  }
}
