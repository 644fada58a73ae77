// SPDX-License-Identifier: MIT
#include "columns.hpp"

#include <fmt/ranges.h>
#include <sys/stat.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

#include "complex_text.hpp"
#include "error.hpp"
#include "first_row.hpp"
#include "suggest.hpp"

namespace orv_cli {
namespace {

constexpr size_t list_piece = 4096;  // cells of a list's row that are held at a time

std::string list_of(const std::vector<std::string>& names) {
  return one_line(fmt::format("{}", fmt::join(names, ", ")));
}

/// A row of names: no word of it is a number, and some cell says something.
bool has_names(const CsvRow& row, const CellFormat& format) {
  const auto has_number = [&](std::string_view cell) {
    double value;
    for (std::string_view word; !(word = next_word(cell)).empty();) {
      if (format.parse(word, value) || is_complex_number(word)) return true;
    }
    return false;
  };
  const auto is_missing = [&](std::string_view cell) { return format.is_missing(cell); };
  return std::ranges::none_of(row.cells, has_number) && !std::ranges::all_of(row.cells, is_missing);
}

/// Of all files together; 0 where one is no regular file.
int64_t size_of(const std::vector<std::string>& files) {
  int64_t size = 0;
  for (const std::string& path : files) {
    struct stat status;
    const int failed = path == "-" ? fstat(0, &status) : stat(path.c_str(), &status);
    if (failed != 0 || !S_ISREG(status.st_mode)) return 0;
    size += status.st_size;
  }
  return size;
}

Input input_with(const std::string& path, Header header) {
  Input input;
  input.files = {path};
  input.header = header;
  return input;
}

}  // namespace

// ---- Table --------------------------------------------------------------------------------------

Table::Table(const std::string& path, Header header, CsvLimit limit)
    : Table(input_with(path, header), std::move(limit)) {}

Table::Table(const Input& input, CsvLimit limit)
    : input_(input), limit_(std::move(limit)), bytes_in_all_(size_of(input.files)) {
  open_next();
  const CsvRow* const row = file_->next();
  if (row == nullptr) throw Error("{} holds no number", file_->name());
  width_ = row->cells.size();
  keep(*row);
  CsvRow first = std::move(head_.front());
  head_.pop_front();
  if (!limit_.in_pieces) read_head();
  if (input_.header == Header::yes ||
      (input_.header == Header::automatic && begins_with_names(first))) {
    names_.assign(first.cells.begin(), first.cells.end());
  } else {
    head_.push_front(std::move(first));
  }
}

void Table::open_next() {
  if (file_ != nullptr) bytes_before_ += file_->bytes_read();
  file_ = std::make_unique<CsvReader>(input_.files[next_file_++], limit_, input_.csv);
}

std::string Table::name() const {
  return input_.files.size() == 1 ? file_->name() : fmt::format("{} files", input_.files.size());
}

/// Adds a copy of the row to the first ones.
void Table::keep(const CsvRow& row) {
  size_t size = 0;
  for (const std::string_view cell : row.cells) size += cell.size();
  std::string& text = head_text_.emplace_back();
  text.reserve(size);  // and so it stays where it is
  CsvRow copy = {{}, row.line, row.first_column};
  for (const std::string_view cell : row.cells) {
    copy.cells.emplace_back(text.data() + text.size(), cell.size());
    text += cell;
  }
  head_.push_back(std::move(copy));
}

/// Of the first file only, whose name its rows' places have.
void Table::read_head() {
  while (head_.size() < 1000 && head_.size() * width_ < 1'000'000) {
    const CsvRow* const row = file_->next();
    if (row == nullptr) break;
    if (row->cells.size() != width_) {
      throw Error("{}, line {}: {} columns where the first row has {}{}", file_->name(), row->line,
                  row->cells.size(), width_, hint());
    }
    keep(*row);
  }
}

bool Table::begins_with_names(const CsvRow& first) {
  if (limit_.in_pieces) return has_names(first, input_.cells);
  const FirstRow judged = first_row_is(first, head_, input_.cells);
  const bool names = judged == FirstRow::names || judged == FirstRow::rather_names;
  if (judged == FirstRow::rather_names) {
    note_ = "is taken as a header, though it holds numbers; --header no takes it as data";
  } else if (judged == FirstRow::rather_data) {
    note_ = "is taken as data, though it may be a header; --header yes takes it as one";
  }
  if (!note_.empty()) note_ = fmt::format("{}: the first row {}", file_->name(), note_);
  return names;
}

/// Goes on with the next file that has rows; its row of names is to be that of the first.
bool Table::continue_in_next_file() {
  const std::string first = input_.files[0] == "-" ? "standard input" : one_line(input_.files[0]);
  while (next_file_ < input_.files.size()) {
    open_next();
    if (names_.empty()) return true;
    const CsvRow* const row = file_->next();
    if (row == nullptr) continue;
    if (!std::ranges::equal(row->cells, names_) && !limit_.in_pieces) {
      throw Error("{}, line {}: the columns are to be those of {}: {}; here they are {}",
                  file_->name(), row->line, first, list_of(names_),
                  list_of({row->cells.begin(), row->cells.end()}));
    }
    return true;
  }
  return false;
}

const CsvRow* Table::read_row() {
  const CsvRow* row;
  while ((row = file_->next()) == nullptr) {
    if (!continue_in_next_file()) return nullptr;
  }
  if (!limit_.in_pieces && row->cells.size() != width_) {
    throw Error("{}, line {}: {} columns where the first row has {}{}", file_->name(), row->line,
                row->cells.size(), width_, hint());
  }
  return row;
}

const CsvRow* Table::next() {
  if (!head_.empty()) {
    from_head_ = std::move(head_.front());
    head_.pop_front();
    return &from_head_;
  }
  head_text_.clear();
  return read_row();
}

void Table::throw_no_column(const std::string& column, std::string_view option) const {
  throw Error("{}: no column {} in {}{}; allowed are 1 to {}{}{}{}", option, in_quotes(column),
              file_->name(), did_you_mean(column, names_), width_,
              names_.empty() ? " (no header row)" : ", ", list_of(names_), hint());
}

size_t Table::find_column(const std::string& column, std::string_view option) const {
  const auto named = std::ranges::count(names_, column);
  if (named == 1) return std::ranges::find(names_, column) - names_.begin();
  if (named > 1) {
    throw Error("{} {}: {} has {} columns of that name; give the column's number, 1 to {}", option,
                in_quotes(column), file_->name(), named, width_);
  }
  size_t number = 0;
  const char* const end = column.data() + column.size();
  const auto [stop, error] = std::from_chars(column.data(), end, number);
  if (error == std::errc() && stop == end && number >= 1 && number <= width_) return number - 1;
  throw_no_column(column, option);
}

std::vector<size_t> Table::find_columns(const std::string& list, std::string_view option) const {
  std::vector<size_t> found;
  if (list.empty()) return found;
  if (std::ranges::count(names_, list) == 1) return {find_column(list, option)};
  for (const std::string& part : parts_of(list)) {
    const bool is_name = std::ranges::count(names_, part) > 0;
    const bool digits = part.find_first_not_of("0123456789-") == part.npos;
    const size_t at = is_name ? part.npos : part.find(digits ? '-' : ':');
    if (at == part.npos) {
      found.push_back(find_column(part, option));
      continue;
    }
    const size_t first = find_column(part.substr(0, at), option);
    const size_t last = find_column(part.substr(at + 1), option);
    if (first > last) {
      throw Error("{}: the range {} ends before it begins; allowed are ranges such as 2-4 and x:z",
                  option, in_quotes(part));
    }
    for (size_t column = first; column <= last; ++column) found.push_back(column);
  }
  return found;
}

std::string Table::no_number(std::string_view text, int64_t line, size_t column) const {
  return fmt::format("{}: {} is not a number; allowed are 2, {}, 1e-3, 0x1p-3, inf, nan{}",
                     place(line, column), in_quotes(text),
                     input_.cells.decimal() == ',' ? "-0,5" : "-0.5", hint());
}

template <class T>
T Table::number(std::string_view text, int64_t line, size_t column) const {
  T value;
  if (!input_.cells.parse(text, value)) throw Error("{}", no_number(text, line, column));
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
  return fmt::format("{}, line {}, column {}{}", file_->name(), line, column + 1, name);
}

// ---- ColumnReader -------------------------------------------------------------------------------

ColumnReader::ColumnReader(const std::string& path, const std::vector<std::string>& columns,
                           Header header, Missing missing)
    : ColumnReader(input_with(path, header), columns, missing) {}

ColumnReader::ColumnReader(const Input& input, const std::vector<std::string>& columns,
                           Missing missing)
    : table_(input, columns.empty() ? CsvLimit{list_piece, true, ""} : CsvLimit{}),
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
  row_ = table_.next();
  if (row_ == nullptr) return false;
  for (const size_t column : columns_) cells.push_back({row_->cells[column], row_->line, column});
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

/// Whether it is a text to be taken as a missing number; the first of them is remembered.
bool ColumnReader::is_text(const Cell& cell) {
  double value;
  if (missing_ == Missing::fail || table_.format().parse(cell.text, value) ||
      is_complex_number(cell.text)) {
    return false;
  }
  if (texts_++ == 0) {
    first_text_ = fmt::format("{}: {}", table_.place(cell.line, cell.column), in_quotes(cell.text));
  }
  return true;
}

bool ColumnReader::next(std::vector<Cell>& cells) {
  for (;;) {
    cells.clear();
    if (!(columns_.empty() ? next_of_list(cells) : next_of_columns(cells))) return false;
    bool skip = false;
    for (Cell& cell : cells) {
      cell.missing = table_.is_missing(cell.text) || is_text(cell);
      if (!cell.missing) continue;
      if (missing_ == Missing::fail) {
        throw Error("{}: the cell is {}; a number is needed, or --missing skip or nan",
                    table_.place(cell.line, cell.column),
                    cell.text.empty() ? "empty" : one_line(cell.text));
      }
      skip |= missing_ == Missing::skip;
      cell.text = "nan";
    }
    if (!skip) return true;
  }
}

}  // namespace orv_cli
