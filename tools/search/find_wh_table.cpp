// SPDX-License-Identifier: MIT
// Finds the rows of the combined congruential family and writes their tables.
//
//   g++ -std=c++20 -O2 find_wh_table.cpp -o find_wh_table
//   find_wh_table TABLE.cpp     prints each row's period and worst spectral figure
//
// A row follows from its first modulus. The four given rows keep their places; of the others, the
// largest threshold is sought for which enough rows without a common modulus pass it.
#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>

#include "spectral.hpp"

using namespace orv_search;

namespace {

struct Candidate {
  WhRow row;
  double figure;
};
using Candidates = std::vector<Candidate>;

/// Every possible row, the first modulus descending.
Candidates all_rows() {
  Candidates list;
  for (uint32_t m = wh_highest; m >= wh_lowest; --m)
    if (is_prime(m))
      if (const auto row = wh_row_from(m)) list.push_back({*row, worst_spectral_figure(*row)});
  return list;
}

class Selection {
 public:
  bool take(const Candidate& candidate) {
    for (uint32_t m : candidate.row.m)
      if (moduli_.contains(m)) return false;
    moduli_.insert(candidate.row.m.begin(), candidate.row.m.end());
    rows_.push_back(candidate);
    return true;
  }

  const Candidates& rows() const { return rows_; }

 private:
  std::set<uint32_t> moduli_;
  Candidates rows_;
};

/// The given rows, the rows with the two ends of the range, then greedily all above the threshold:
/// of two that overlap the one that ends first leaves more room.
Selection select(const Candidates& by_end, double threshold) {
  Selection selection;
  for (const auto& [number, row] : given_wh_rows) selection.take({row, worst_spectral_figure(row)});
  const auto take_best = [&](auto fits) {
    const Candidate* best = nullptr;
    for (const Candidate& c : by_end)
      if (fits(c.row) && (!best || c.figure > best->figure)) best = &c;
    if (best) selection.take(*best);
  };
  take_best([](const WhRow& row) { return row.m[0] == wh_highest; });
  take_best([](const WhRow& row) { return row.m[3] == wh_lowest; });
  for (const Candidate& c : by_end)
    if (c.figure >= threshold) selection.take(c);
  return selection;
}

/// The rows in the order of the table.
Candidates find_table() {
  Candidates list = all_rows();
  std::printf("%zu first moduli lead to a row\n", list.size());
  std::stable_sort(list.begin(), list.end(),
                   [](const Candidate& a, const Candidate& b) { return a.row.m[3] > b.row.m[3]; });
  std::vector<double> thresholds;
  for (const Candidate& c : list) thresholds.push_back(c.figure);
  std::sort(thresholds.rbegin(), thresholds.rend());
  size_t i = wh_rows;  // fewer rows than are wanted pass a higher threshold
  while (i < thresholds.size() && select(list, thresholds[i]).rows().size() < wh_rows) ++i;
  if (i == thresholds.size()) {
    std::fprintf(stderr, "find_wh_table: too few rows without a common modulus\n");
    std::exit(1);
  }
  Candidates chosen = select(list, thresholds[i]).rows();
  std::printf("threshold of the figure: %.4f\n", thresholds[i]);

  const size_t given = std::size(given_wh_rows);
  std::sort(chosen.begin() + given, chosen.end(),
            [](const Candidate& a, const Candidate& b) { return a.row.m[0] > b.row.m[0]; });
  Candidates table(chosen.begin() + given, chosen.end());
  for (size_t k = 0; k < given; ++k)
    table.insert(table.begin() + given_wh_rows[k].number, chosen[k]);
  return table;
}

double log2_period(const WhRow& row) {
  double sum = 1;
  for (uint32_t m : row.m) sum += std::log2((m - 1) / 2);
  return sum;
}

template <class Value>
void write_array(std::FILE* file, const char* head, const Candidates& table, const char* format,
                 Value value) {
  std::fprintf(file, "\n%s[273][4] = {\n", head);
  for (const Candidate& c : table) {
    std::fprintf(file, "    {");
    for (int k = 0; k < 4; ++k) {
      if (k) std::fprintf(file, ", ");
      std::fprintf(file, format, value(c.row, k));
    }
    std::fprintf(file, "},\n");
  }
  std::fprintf(file, "};\n");
}

bool write_table(const char* path, const Candidates& table) {
  std::FILE* file = std::fopen(path, "w");
  if (!file) return false;
  std::fprintf(file, "// Made by: tools/search/find_wh_table %s\n", path);
  std::fprintf(file, "// clang-format off\n#include <orv/zok.h>\n");
  write_array(file, "// Multipliers.\nconst uint8_t _zok_WH_A", table, "%u",
              [](const WhRow& row, int k) { return row.a[k]; });
  write_array(file, "// Moduli.\nconst uint32_t _zok_WH_M", table, "%u",
              [](const WhRow& row, int k) { return row.m[k]; });
  write_array(file, "// Reciprocals of the moduli.\nconst double _zokdWH_IM_Tab", table, "%a",
              [](const WhRow& row, int k) { return 1.0 / row.m[k]; });
  return std::fclose(file) == 0;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::fprintf(stderr, "usage: find_wh_table TABLE.cpp\n");
    return 2;
  }
  const Candidates table = find_table();
  double worst = 1, best = 0;
  for (size_t i = 0; i < table.size(); ++i) {
    const auto& [row, figure] = table[i];
    std::printf("%zu: first modulus %u, period 2^%.3f, worst figure %.4f\n", i, row.m[0],
                log2_period(row), figure);
    worst = std::min(worst, figure);
    best = std::max(best, figure);
  }
  std::printf("worst figures from %.4f to %.4f\n", worst, best);
  if (!write_table(arguments[1], table)) {
    std::fprintf(stderr, "find_wh_table: cannot write %s\n", arguments[1]);
    return 2;
  }
}
