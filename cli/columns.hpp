// The columns of a CSV file: their names, and the numbers in them.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "csv.hpp"

namespace orv_cli {

enum class Header { automatic, yes, no };
enum class Missing { fail, skip, nan };

Header header_of(std::string_view text);  // "auto", "yes" or "no"

/// A cell, or a word of a list's cell.
struct Cell {
  std::string_view text;
  int64_t line = 0;
  size_t column = 0;  // from 0
};

inline bool is_missing(std::string_view text) { return text.empty() || text == "NA"; }

/// False if the text is not all of a number, as strtod reads it.
template <class T>
bool parse(std::string_view text, T& value);

/// The next word of the text, which is taken off it; empty at its end.
std::string_view next_word(std::string_view& text);

/// The rows of a file, which may begin with one of names.
class Table {
 public:
  Table(const std::string& path, Header header, CsvLimit limit = {});

  /// The next row below the names, valid until the next call; null at the end of the file.
  const CsvRow* next();

  size_t width() const { return width_; }
  const std::vector<std::string>& names() const { return names_; }  // empty without such a row
  const std::string& note() const { return note_; }  // of a doubt about the first row; or empty
  const CsvReader& file() const { return file_; }

  /// The first rows that `next` has yet to give, 1000 or what is a million cells.
  const std::deque<CsvRow>& head() const { return head_; }

  /// The place from 0 of a column that is given by its name or its number from 1.
  size_t find_column(const std::string& column, std::string_view option) const;

  /// The number in a cell, rounded once to T.
  template <class T>
  T number(std::string_view text, int64_t line, size_t column) const;

  /// "FILE, line 2, column 3 (Name)"
  std::string place(int64_t line, size_t column) const;

 private:
  const CsvRow* read_row();
  void read_head();
  bool begins_with_names(const CsvRow& first);

  bool is_list_;
  CsvReader file_;
  std::vector<std::string> names_;
  std::string note_;
  std::deque<CsvRow> head_;
  CsvRow from_head_;  // the row that `next` gave last
  size_t width_ = 0;
};

/// The numbers of one or two columns, or all numbers of a plain list.
class ColumnReader {
 public:
  /// Columns are given by name or by number from 1. With none, the file is a list: every number is
  /// read, one after the other; white space parts numbers, too, and rows may have any width.
  ColumnReader(const std::string& path, const std::vector<std::string>& columns, Header header,
               Missing missing);

  /// Reads the cells of the next row, as many as there are columns, or the next number; their texts
  /// are valid until the next call. A missing cell is treated as was asked for. False at the end of
  /// the file.
  bool next(std::vector<Cell>& cells);

  template <class T>
  T number(const Cell& cell) const {
    return table_.number<T>(cell.text, cell.line, cell.column);
  }

  const CsvReader& file() const { return table_.file(); }
  const std::string& note() const { return table_.note(); }

 private:
  bool next_of_columns(std::vector<Cell>& cells);
  bool next_of_list(std::vector<Cell>& cells);

  Table table_;
  Missing missing_;
  std::vector<size_t> columns_;
  const CsvRow* row_ = nullptr;  // of a list, with the place in it
  size_t cell_ = 0;
  std::string_view rest_;
};

}  // namespace orv_cli
