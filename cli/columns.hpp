// The numbers of one or two columns of a CSV file, or all numbers of a plain list.
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

/// A cell, or a word of a list's cell.
struct Cell {
  std::string text;
  int64_t line = 0;
  size_t column = 0;  // from 0
};

class ColumnReader {
 public:
  /// Columns are given by name or by number from 1. With none, every number of the file is read,
  /// one after the other; white space parts numbers, too.
  ColumnReader(const std::string& path, const std::vector<std::string>& columns, Header header,
               Missing missing);

  /// Reads the cells of the next row, as many as there are columns, or the next number. A missing
  /// cell is treated as was asked for. False at the end of the file.
  bool next(std::vector<Cell>& cells);

  /// The number in a cell, rounded once to T.
  template <class T>
  T number(const Cell& cell) const;

  const CsvReader& file() const { return file_; }

 private:
  bool next_row();
  void find_columns(const std::vector<std::string>& columns);
  size_t find_column(const std::string& column) const;
  bool next_of_columns(std::vector<Cell>& cells);
  bool next_of_list(std::vector<Cell>& cells);
  std::string place(const Cell& cell) const;

  CsvReader file_;
  Missing missing_;
  std::vector<std::string> names_;  // of all columns; empty without a header row
  std::vector<size_t> columns_;
  CsvRow row_;
  bool row_is_read_ = false;  // the first row turned out not to be a header
  size_t width_ = 0;
  std::deque<Cell> words_;
};

}  // namespace orv_cli
