#include "columns.hpp"

#include <fmt/ranges.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <type_traits>
#include <utility>

#include "complex_text.hpp"
#include "error.hpp"
#include "first_row.hpp"

namespace orv_cli {
namespace {

constexpr size_t list_piece = 4096;  // cells of a list's row that are held at a time

std::string list_of(const std::vector<std::string>& names) {
  return one_line(fmt::format("{}", fmt::join(names, ", ")));
}

/// A row of names: no word of it is a number, and some cell says something.
bool has_names(const CsvRow& row) {
  const auto has_number = [](std::string_view cell) {
    double value;
    for (std::string_view word; !(word = next_word(cell)).empty();) {
      if (parse(word, value) || is_complex_number(word)) return true;
    }
    return false;
  };
  return std::ranges::none_of(row.cells, has_number) && !std::ranges::all_of(row.cells, is_missing);
}

}  // namespace

Header header_of(std::string_view text) {
  return text == "yes" ? Header::yes : text == "no" ? Header::no : Header::automatic;
}

/// The C locale holds: nothing here sets another.
template <class T>
bool parse(std::string_view text, T& value) {
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error == std::errc() && stop == end) return true;
  // What from_chars doesn't know: a plus sign, hexadecimal digits, what is out of range.
  const std::string copy(text);
  char* other_stop;
  if constexpr (std::is_same_v<T, float>) {
    value = std::strtof(copy.c_str(), &other_stop);
  } else {
    value = std::strtod(copy.c_str(), &other_stop);
  }
  return !text.empty() && other_stop == copy.c_str() + copy.size();
}

template bool parse<float>(std::string_view text, float& value);
template bool parse<double>(std::string_view text, double& value);

std::string_view next_word(std::string_view& text) {
  const auto is_blank = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
  const auto begin = std::ranges::find_if_not(text, is_blank);
  const auto end = std::find_if(begin, text.end(), is_blank);
  text = {end, text.end()};
  return {begin, end};
}

// ---- Table --------------------------------------------------------------------------------------

Table::Table(const std::string& path, Header header, CsvLimit limit)
    : is_list_(limit.in_pieces), file_(path, std::move(limit)) {
  const CsvRow* const row = file_.next();
  if (row == nullptr) throw Error("{} holds no number", file_.name());
  width_ = row->cells.size();
  CsvRow first = *row;
  if (!is_list_) read_head();
  if (header == Header::yes || (header == Header::automatic && begins_with_names(first))) {
    names_ = std::move(first.cells);
  } else {
    head_.push_front(std::move(first));
  }
}

void Table::read_head() {
  while (head_.size() < 1000 && head_.size() * width_ < 1'000'000) {
    const CsvRow* const row = read_row();
    if (row == nullptr) break;
    head_.push_back(*row);
  }
}

bool Table::begins_with_names(const CsvRow& first) {
  if (is_list_) return has_names(first);
  const FirstRow judged = first_row_is(first, head_);
  const bool names = judged == FirstRow::names || judged == FirstRow::rather_names;
  if (judged == FirstRow::rather_names) {
    note_ = "is taken as a header, though it holds numbers; --header no takes it as data";
  } else if (judged == FirstRow::rather_data) {
    note_ = "is taken as data, though it may be a header; --header yes takes it as one";
  }
  if (!note_.empty()) note_ = fmt::format("{}: the first row {}", file_.name(), note_);
  return names;
}

const CsvRow* Table::read_row() {
  const CsvRow* const row = file_.next();
  if (row != nullptr && !is_list_ && row->cells.size() != width_) {
    throw Error("{}, line {}: {} columns where the first row has {}", file_.name(), row->line,
                row->cells.size(), width_);
  }
  return row;
}

const CsvRow* Table::next() {
  if (head_.empty()) return read_row();
  from_head_ = std::move(head_.front());
  head_.pop_front();
  return &from_head_;
}

size_t Table::find_column(const std::string& column, std::string_view option) const {
  const auto named = std::ranges::count(names_, column);
  if (named == 1) return std::ranges::find(names_, column) - names_.begin();
  if (named > 1) {
    throw Error("{} {}: {} has {} columns of that name; give the column's number, 1 to {}", option,
                in_quotes(column), file_.name(), named, width_);
  }
  char* end;
  const long number = std::strtol(column.c_str(), &end, 10);
  if (*end == '\0' && number >= 1 && static_cast<size_t>(number) <= width_) return number - 1;
  throw Error("{}: no column {} in {}; allowed are 1 to {}{}{}", option, in_quotes(column),
              file_.name(), width_, names_.empty() ? " (no header row)" : ", ", list_of(names_));
}

template <class T>
T Table::number(std::string_view text, int64_t line, size_t column) const {
  T value;
  if (!parse(text, value)) {
    throw Error("{}: {} is not a number; allowed are 2, -0.5, 1e-3, 0x1p-3, inf, nan",
                place(line, column), in_quotes(text));
  }
  if (std::isinf(value) && text.find_first_of("iI") == text.npos) {  // not spelled out
    throw Error("{}: {} is out of range; the largest {} is {}", place(line, column),
                in_quotes(text), sizeof(T) == 4 ? "float" : "double",
                std::numeric_limits<T>::max());
  }
  return value;
}

template float Table::number<float>(std::string_view text, int64_t line, size_t column) const;
template double Table::number<double>(std::string_view text, int64_t line, size_t column) const;

std::string Table::place(int64_t line, size_t column) const {
  const std::string name = column < names_.size() ? " (" + one_line(names_[column]) + ")" : "";
  return fmt::format("{}, line {}, column {}{}", file_.name(), line, column + 1, name);
}

// ---- ColumnReader -------------------------------------------------------------------------------

ColumnReader::ColumnReader(const std::string& path, const std::vector<std::string>& columns,
                           Header header, Missing missing)
    : table_(path, header, columns.empty() ? CsvLimit{list_piece, true, ""} : CsvLimit{}),
      missing_(missing) {
  for (const std::string& column : columns) {
    const char* const option = columns_.empty() ? "--column" : "--second";
    columns_.push_back(table_.find_column(column, option));
  }
  if (columns.empty() && table_.names().size() > 1) {
    throw Error("{} has columns {}: choose one with --column", file().name(),
                list_of(table_.names()));
  }
}

bool ColumnReader::next_of_columns(std::vector<Cell>& cells) {
  const CsvRow* const row = table_.next();
  if (row == nullptr) return false;
  for (const size_t column : columns_) cells.push_back({row->cells[column], row->line, column});
  return true;
}

bool ColumnReader::next_of_list(std::vector<Cell>& cells) {
  const auto give = [&](std::string_view text) {
    cells.push_back({text, row_->line, row_->first_column + cell_});
    return true;
  };
  for (;;) {
    const std::string_view word = next_word(rest_);
    if (!word.empty()) return give(word);
    if (row_ == nullptr || ++cell_ == row_->cells.size()) {
      row_ = table_.next();
      cell_ = 0;
      if (row_ == nullptr) return false;
    }
    rest_ = row_->cells[cell_];
    if (rest_.empty()) return give(rest_);
  }
}

bool ColumnReader::next(std::vector<Cell>& cells) {
  for (;;) {
    cells.clear();
    if (!(columns_.empty() ? next_of_list(cells) : next_of_columns(cells))) return false;
    bool skip = false;
    for (Cell& cell : cells) {
      if (!is_missing(cell.text)) continue;
      if (missing_ == Missing::fail) {
        throw Error("{}: the cell is {}; a number is needed, or --missing skip or nan",
                    table_.place(cell.line, cell.column), cell.text.empty() ? "empty" : "NA");
      }
      skip |= missing_ == Missing::skip;
      cell.text = "nan";
    }
    if (!skip) return true;
  }
}

}  // namespace orv_cli
