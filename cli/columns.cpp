#include "columns.hpp"

#include <fmt/ranges.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <sstream>
#include <type_traits>
#include <utility>

#include "error.hpp"

namespace orv_cli {
namespace {

bool is_number(const std::string& text) {
  double value;
  return parse(text, value);
}

std::vector<std::string> words_of(const std::string& text) {
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), {}};
}

std::string list_of(const std::vector<std::string>& names) {
  return one_line(fmt::format("{}", fmt::join(names, ", ")));
}

/// A row of names: no cell is a number, nor holds one in a list, and some cell says something.
bool looks_like_header(const CsvRow& row, bool is_list) {
  const auto is_data = [is_list](const std::string& cell) {
    return is_number(cell) || (is_list && std::ranges::any_of(words_of(cell), is_number));
  };
  return std::ranges::none_of(row.cells, is_data) && !std::ranges::all_of(row.cells, is_missing);
}

}  // namespace

Header header_of(std::string_view text) {
  return text == "yes" ? Header::yes : text == "no" ? Header::no : Header::automatic;
}

/// The C locale holds: nothing here sets another.
template <class T>
bool parse(const std::string& text, T& value) {
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error == std::errc() && stop == end) return true;
  // What from_chars doesn't know: a plus sign, hexadecimal digits, what is out of range.
  char* other_stop;
  if constexpr (std::is_same_v<T, float>) {
    value = std::strtof(text.c_str(), &other_stop);
  } else {
    value = std::strtod(text.c_str(), &other_stop);
  }
  return !text.empty() && other_stop == end;
}

template bool parse<float>(const std::string& text, float& value);
template bool parse<double>(const std::string& text, double& value);

// ---- Table --------------------------------------------------------------------------------------

Table::Table(const std::string& path, Header header, bool is_list)
    : file_(path), is_list_(is_list) {
  const CsvRow* const first = file_.next();
  if (first == nullptr) throw Error("{} holds no number", file_.name());
  width_ = first->cells.size();
  if (header == Header::yes ||
      (header == Header::automatic && looks_like_header(*first, is_list))) {
    names_ = first->cells;
  } else {
    first_row_ = first;
  }
}

const CsvRow* Table::next() {
  const CsvRow* const row = first_row_ ? std::exchange(first_row_, nullptr) : file_.next();
  if (row != nullptr && !is_list_ && row->cells.size() != width_) {
    throw Error("{}, line {}: {} columns where the first row has {}", file_.name(), row->line,
                row->cells.size(), width_);
  }
  return row;
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
T Table::number(const std::string& text, int64_t line, size_t column) const {
  T value;
  if (!parse(text, value)) {
    throw Error("{}: {} is not a number; allowed are 2, -0.5, 1e-3, 0x1p-3, inf, nan",
                place(line, column), in_quotes(text));
  }
  if (std::isinf(value) && text.find_first_of("iI") == std::string::npos) {  // not spelled out
    throw Error("{}: {} is out of range; the largest {} is {}", place(line, column),
                in_quotes(text), sizeof(T) == 4 ? "float" : "double",
                std::numeric_limits<T>::max());
  }
  return value;
}

template float Table::number<float>(const std::string& text, int64_t line, size_t column) const;
template double Table::number<double>(const std::string& text, int64_t line, size_t column) const;

std::string Table::place(int64_t line, size_t column) const {
  const std::string name = column < names_.size() ? " (" + one_line(names_[column]) + ")" : "";
  return fmt::format("{}, line {}, column {}{}", file_.name(), line, column + 1, name);
}

// ---- ColumnReader -------------------------------------------------------------------------------

ColumnReader::ColumnReader(const std::string& path, const std::vector<std::string>& columns,
                           Header header, Missing missing)
    : table_(path, header, columns.empty()), missing_(missing) {
  for (const std::string& column : columns) {
    columns_.push_back(table_.find_column(column, "--column"));
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
  while (words_.empty()) {
    const CsvRow* const row = table_.next();
    if (row == nullptr) return false;
    for (size_t column = 0; column < row->cells.size(); ++column) {
      const std::string& cell = row->cells[column];
      if (cell.empty()) words_.push_back({"", row->line, column});
      for (const std::string& word : words_of(cell)) words_.push_back({word, row->line, column});
    }
  }
  cells.push_back(std::move(words_.front()));
  words_.pop_front();
  return true;
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
