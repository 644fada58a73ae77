// SPDX-License-Identifier: MIT
// The columns of a CSV file: their names, and the numbers in them.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cells.hpp"
#include "csv.hpp"
#include "input.hpp"

namespace orv_cli {

enum class Missing { fail, skip, nan };

/// A cell, or a word of a list's cell.
struct Cell {
  std::string_view text;
  int64_t line = 0;
  size_t column = 0;  // from 0
  bool missing = false;
};

/// The rows of files with the same columns, each of which may begin with one of names.
class Table {
 public:
  explicit Table(const Input& input, CsvLimit limit = {});
  Table(const std::string& path, Header header, CsvLimit limit = {});

  /// The next row below the names, valid until the next call; null at the end of the files.
  const CsvRow* next();

  size_t width() const { return width_; }
  const std::vector<std::string>& names() const { return names_; }  // empty without such a row
  const std::string& note() const { return note_; }  // of a doubt about the first row; or empty
  const CsvReader& file() const { return *file_; }   // that the last row is of
  std::string name() const;                          // of the file, or of how many
  int64_t bytes_read() const { return bytes_before_ + file_->bytes_read(); }
  int64_t bytes_in_all() const { return bytes_in_all_; }  // 0 where that is not known
  const CellFormat& format() const { return input_.cells; }
  char delimiter() const { return input_.csv.delimiter; }

  /// The first rows that `next` has yet to give, 1000 or what is a million cells.
  const std::deque<CsvRow>& head() const { return head_; }

  /// The place from 0 of a column that is given by its name or its number from 1.
  size_t find_column(const std::string& column, std::string_view option) const;

  /// Those of a list of names, numbers and ranges of these, with commas between.
  std::vector<size_t> find_columns(const std::string& list, std::string_view option) const;

  bool is_missing(std::string_view text) const { return input_.cells.is_missing(text); }

  /// The number in a cell, rounded once to T.
  template <class T>
  T number(std::string_view text, int64_t line, size_t column) const;

  /// What is wrong with a cell that holds no number.
  std::string no_number(std::string_view text, int64_t line, size_t column) const;

  /// "FILE, line 2, column 3 (Name)"
  std::string place(int64_t line, size_t column) const;

  /// What to say where the file seems to be written otherwise than it is read; or nothing.
  std::string hint() const { return format_hint(file_->beginning(), input_.csv); }

 private:
  struct Text;

  void open_next();
  bool continue_in_next_file();
  const CsvRow* read_row();
  void read_head();
  void keep(const CsvRow& row);
  bool begins_with_names(const CsvRow& first);
  size_t find_end_of_range(const std::string& column, std::string_view option) const;
  [[noreturn]] void throw_no_column(const std::string& column, std::string_view option) const;

  Input input_;
  CsvLimit limit_;
  std::unique_ptr<CsvReader> file_;
  size_t next_file_ = 0;
  int64_t bytes_before_ = 0, bytes_in_all_ = 0;  // of the files that are read
  std::vector<std::string> names_;
  std::string note_;
  std::deque<CsvRow> head_;
  std::deque<std::string> head_text_;  // that its cells are in
  CsvRow from_head_;                   // the row that `next` gave last
  size_t width_ = 0;
};

/// The numbers of one or two columns, or all numbers of a plain list.
class ColumnReader {
 public:
  /// Columns are given by name or by number from 1. With none, the file is a list: every number is
  /// read, one after the other; white space parts numbers, too, and rows may have any width.
  ColumnReader(const Input& input, const std::vector<std::string>& columns, Missing missing);
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

  const Table& table() const { return table_; }
  const CsvReader& file() const { return table_.file(); }
  const std::string& note() const { return table_.note(); }

  /// The row of the cells that `next` gave, which a list has not.
  const CsvRow& row() const { return *row_; }

  /// How many cells with text were taken as missing ones, and the place of the first.
  int64_t texts() const { return texts_; }
  const std::string& first_text() const { return first_text_; }

 private:
  bool next_of_columns(std::vector<Cell>& cells);
  bool next_of_list(std::vector<Cell>& cells);
  bool is_text(const Cell& cell);

  Table table_;
  Missing missing_;
  std::vector<size_t> columns_;
  const CsvRow* row_ = nullptr;
  size_t cell_ = 0;  // of a list's row
  std::string_view rest_;
  int64_t texts_ = 0;
  std::string first_text_;
};

}  // namespace orv_cli
