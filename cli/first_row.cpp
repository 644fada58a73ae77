// SPDX-License-Identifier: MIT
#include "first_row.hpp"

#include <algorithm>
#include <cctype>
#include <set>
#include <string_view>
#include <vector>

#include "complex_text.hpp"

namespace orv_cli {
namespace {

/// Kinds of cells, to be joined; a missing cell has none.
enum : unsigned { text = 1, year = 2, whole = 4, other = 8, number = year | whole | other };

unsigned kind_of(std::string_view cell, const CellFormat& format) {
  double value;
  if (format.is_missing(cell)) return 0;
  if (!format.parse(cell, value)) return is_complex_number(cell) ? other : text;
  const bool is_signed = cell[0] == '-' || cell[0] == '+';
  const auto is_digit = [](unsigned char c) { return std::isdigit(c) != 0; };
  if (!std::ranges::all_of(cell.substr(is_signed ? 1 : 0), is_digit)) return other;
  return cell.size() == 4 && (cell[0] == '1' || cell[0] == '2') ? year : whole;
}

unsigned kinds_below(const std::deque<CsvRow>& rows, size_t column, const CellFormat& format) {
  unsigned kinds = 0;
  for (const CsvRow& row : rows) kinds |= kind_of(row.cells[column], format);
  return kinds;
}

/// Whether a cell of this kind stands above none of its like.
bool differs(unsigned kind, unsigned below) {
  if (below == 0) return false;
  if ((below & text) != 0) return false;
  if (kind == year) return (below & year) == 0;
  return kind == text || below == other;
}

/// 0, 1, 2 or 1, 2, 3 and so on: what programs write above columns without names.
bool are_column_numbers(const CsvRow& first, const std::vector<size_t>& numbers,
                        const CellFormat& format) {
  double expected, value;
  if (numbers.size() < 3 || !format.parse(first.cells[numbers[0]], expected)) return false;
  if (expected != 0 && expected != 1) return false;
  return std::ranges::all_of(numbers, [&](size_t column) {
    return format.parse(first.cells[column], value) && value == expected++;
  });
}

}  // namespace

FirstRow first_row_is(const CsvRow& first, const std::deque<CsvRow>& below,
                      const CellFormat& format) {
  std::vector<size_t> texts, numbers;  // columns
  unsigned kinds = 0;
  bool has_label = false, are_names = true;
  std::set<std::string_view> seen;
  for (size_t column = 0; column < first.cells.size(); ++column) {
    const std::string_view cell = first.cells[column];
    const unsigned kind = kind_of(cell, format);
    kinds |= kind;
    has_label |= kind == text || cell.empty();
    if (kind == text) texts.push_back(column);
    if ((kind & number) == 0) continue;
    numbers.push_back(column);
    are_names = are_names && kind != other && seen.insert(cell).second;
  }
  if (numbers.empty()) return texts.empty() ? FirstRow::data : FirstRow::names;
  const auto is_unlike = [&](size_t column) {
    return differs(kind_of(first.cells[column], format), kinds_below(below, column, format));
  };
  const auto is_above_texts = [&](size_t column) {
    return kinds_below(below, column, format) == text;
  };
  if (std::ranges::any_of(texts, is_unlike)) return FirstRow::rather_names;
  if (are_names && std::ranges::any_of(numbers, is_above_texts)) return FirstRow::rather_names;
  if (!are_names || below.empty()) return FirstRow::data;
  const bool all_unlike = std::ranges::all_of(numbers, is_unlike);
  const bool several = numbers.size() > 1;
  if (all_unlike && (has_label || (several && (kinds & number) == year) ||
                     are_column_numbers(first, numbers, format))) {
    return FirstRow::rather_names;
  }
  return has_label || (all_unlike && several) ? FirstRow::rather_data : FirstRow::data;
}

}  // namespace orv_cli
