#include "columns.hpp"

#include <fmt/ranges.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <sstream>
#include <type_traits>

#include "error.hpp"

namespace orv_cli {
namespace {

bool is_missing(const std::string& text) { return text.empty() || text == "NA"; }

/// False if the text is not all of a number. The C locale holds: nothing here sets another.
template <class T>
bool parse(const std::string& text, T& value) {
  char* end;
  if constexpr (std::is_same_v<T, float>) {
    value = std::strtof(text.c_str(), &end);
  } else {
    value = std::strtod(text.c_str(), &end);
  }
  return !text.empty() && end == text.c_str() + text.size();
}

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

ColumnReader::ColumnReader(const std::string& path, const std::vector<std::string>& columns,
                           Header header, Missing missing)
    : file_(path), missing_(missing) {
  if (!file_.next(row_)) throw Error("{} holds no number", file_.name());
  width_ = row_.cells.size();
  if (header == Header::yes ||
      (header == Header::automatic && looks_like_header(row_, columns.empty()))) {
    names_ = row_.cells;
  } else {
    row_is_read_ = true;
  }
  for (const std::string& column : columns) columns_.push_back(find_column(column));
  if (columns.empty() && names_.size() > 1) {
    throw Error("{} has columns {}: choose one with --column", file_.name(), list_of(names_));
  }
}

size_t ColumnReader::find_column(const std::string& column) const {
  const auto named = std::ranges::count(names_, column);
  if (named == 1) return std::ranges::find(names_, column) - names_.begin();
  if (named > 1) {
    throw Error("--column {}: {} has {} columns of that name; give the column's number, 1 to {}",
                in_quotes(column), file_.name(), named, width_);
  }
  char* end;
  const long number = std::strtol(column.c_str(), &end, 10);
  if (*end == '\0' && number >= 1 && static_cast<size_t>(number) <= width_) return number - 1;
  throw Error("no column {} in {}; allowed are 1 to {}{}{}", in_quotes(column), file_.name(),
              width_, names_.empty() ? " (no header row)" : ", ", list_of(names_));
}

bool ColumnReader::next_row() {
  if (row_is_read_) {
    row_is_read_ = false;
    return true;
  }
  return file_.next(row_);
}

std::string ColumnReader::place(const Cell& cell) const {
  const std::string name =
      cell.column < names_.size() ? " (" + one_line(names_[cell.column]) + ")" : "";
  return fmt::format("{}, line {}, column {}{}", file_.name(), cell.line, cell.column + 1, name);
}

bool ColumnReader::next_of_columns(std::vector<Cell>& cells) {
  if (!next_row()) return false;
  if (row_.cells.size() != width_) {
    throw Error("{}, line {}: {} columns where the first row has {}", file_.name(), row_.line,
                row_.cells.size(), width_);
  }
  for (const size_t column : columns_) cells.push_back({row_.cells[column], row_.line, column});
  return true;
}

bool ColumnReader::next_of_list(std::vector<Cell>& cells) {
  while (words_.empty()) {
    if (!next_row()) return false;
    for (size_t column = 0; column < row_.cells.size(); ++column) {
      const std::string& cell = row_.cells[column];
      if (cell.empty()) words_.push_back({"", row_.line, column});
      for (const std::string& word : words_of(cell)) words_.push_back({word, row_.line, column});
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
        throw Error("{}: the cell is {}; a number is needed, or --missing skip or nan", place(cell),
                    cell.text.empty() ? "empty" : "NA");
      }
      skip |= missing_ == Missing::skip;
      cell.text = "nan";
    }
    if (!skip) return true;
  }
}

template <class T>
T ColumnReader::number(const Cell& cell) const {
  T value;
  if (!parse(cell.text, value)) {
    throw Error("{}: {} is not a number; allowed are 2, -0.5, 1e-3, 0x1p-3, inf, nan", place(cell),
                in_quotes(cell.text));
  }
  const bool spelled_out = cell.text.find_first_of("iI") != std::string::npos;
  if (std::isinf(value) && !spelled_out) {
    throw Error("{}: {} is out of range; the largest {} is {}", place(cell), in_quotes(cell.text),
                sizeof(T) == 4 ? "float" : "double", std::numeric_limits<T>::max());
  }
  return value;
}

template float ColumnReader::number<float>(const Cell& cell) const;
template double ColumnReader::number<double>(const Cell& cell) const;

}  // namespace orv_cli
