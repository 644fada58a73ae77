// SPDX-License-Identifier: MIT
#include "stats_choice.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <deque>

#include "error.hpp"

namespace orv_cli {

Choice::Choice(const Table& table, const StatsOptions& options) : table_(table) {
  if (table.head().empty()) throw Error("{} holds no number, only names", table.file().name());
  if (!table.note().empty()) notes.push_back(table.note());
  weights = find(options.weights, "--weights");
  by = find_all(options.by, "--by");
  const auto partial = find_all(options.partial, "--partial");
  const auto given = find_all(options.given, "--given");
  excluded_ = find_all(options.exclude, "--exclude");
  if (options.select.empty()) {
    choose_numeric();
  } else {
    for (const size_t c : find_all(options.select, "--select")) {
      if (std::ranges::count(excluded_, c) == 0) add(c, "--select");
    }
    if (columns.empty()) {
      throw Error("--exclude {}: no column is left of --select {}", in_quotes(options.exclude),
                  in_quotes(options.select));
    }
  }
  roles.assign(columns.size(), 0);
  set_roles(partial, "--partial", 1);
  set_roles(given, "--given", -1);
  if (weights && std::ranges::count(columns, *weights) > 0) {
    throw Error("--weights {}: the column is selected, too; allowed is one that is not",
                in_quotes(options.weights));
  }
  if (by.size() > most_by) {
    throw Error("--by {}: {} columns; allowed are {}", in_quotes(options.by), by.size(), most_by);
  }
  for (const size_t column : by) {
    if (std::ranges::count(columns, column) > 0) {
      throw Error("--by {}: {} is selected, too; allowed are columns that are not",
                  in_quotes(options.by), in_quotes(name(column)));
    }
  }
}

std::string Choice::name(size_t column) const {
  return table_.names().empty() ? fmt::format("column {}", column + 1) : table_.names()[column];
}

std::optional<size_t> Choice::find(const std::string& column, std::string_view option) const {
  if (column.empty()) return std::nullopt;
  return table_.find_column(column, option);
}

std::vector<size_t> Choice::find_all(const std::string& list, std::string_view option) const {
  return table_.find_columns(list, option);
}

void Choice::add(size_t column, std::string_view option) {
  if (std::ranges::count(columns, column) > 0) {
    throw Error("{}: {} is named twice", option, in_quotes(name(column)));
  }
  expect_numbers(column);
  columns.push_back(column);
}

/// The first of the rows to come that have something in the column, or null.
const CsvRow* Choice::first_row_with(size_t column) const {
  const std::deque<CsvRow>& head = table_.head();
  const auto row = std::ranges::find_if(
      head, [&](const CsvRow& r) { return !table_.is_missing(r.cells[column]); });
  return row == head.end() ? nullptr : &*row;
}

/// A text below numbers may be a missing one, but a column that begins with one holds text.
void Choice::expect_numbers(size_t column) const {
  const CsvRow* const row = first_row_with(column);
  if (row != nullptr) table_.number<double>(row->cells[column], row->line, column);
}

/// By its first cell that is not missing.
void Choice::choose_numeric() {
  Strings texts, names;
  for (size_t column = 0; column < table_.width(); ++column) {
    const auto is_in = [&](const std::vector<size_t>& v) {
      return std::ranges::count(v, column) > 0;
    };
    if (column == weights || is_in(by) || is_in(excluded_)) continue;
    const CsvRow* const row = first_row_with(column);
    double value;
    if (row == nullptr) {
      empty.push_back(column);
    } else if (table_.format().parse(row->cells[column], value)) {
      columns.push_back(column);
    } else {
      texts.push_back(fmt::format("{} ({}, line {})", one_line(name(column), 40),
                                  in_quotes(row->cells[column]), row->line));
    }
  }
  for (const size_t column : empty) names.push_back(one_line(name(column), 40));
  for (const auto& [list, why] : {std::pair(&texts, "hold text"), {&names, "are empty"}}) {
    if (list->empty()) continue;
    notes.push_back(fmt::format("left out, as they {}: {}", why, fmt::join(*list, ", ")));
  }
  if (columns.empty()) {
    throw Error("{} has no column of numbers; {}{}", table_.file().name(), fmt::join(notes, "; "),
                table_.hint());
  }
}

/// Columns that have a role are analysed, whether or not they were selected.
void Choice::set_roles(const std::vector<size_t>& list, std::string_view option, int64_t role) {
  for (const size_t column : list) {
    const auto at = static_cast<size_t>(std::ranges::find(columns, column) - columns.begin());
    if (at == columns.size()) {
      expect_numbers(column);
      columns.push_back(column);
      roles.push_back(0);
    }
    if (roles[at] != 0) {
      throw Error("{}: {} is named twice in --partial and --given", option,
                  in_quotes(name(column)));
    }
    roles[at] = role;
  }
}

}  // namespace orv_cli
