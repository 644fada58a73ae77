// SPDX-License-Identifier: MIT
// Reads a file of cells with commas or the like between, row by row.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "bytes.hpp"

namespace orv_cli {

struct CsvRow {
  std::vector<std::string_view> cells;
  int64_t line = 0;         // where the row begins, from 1
  size_t first_column = 0;  // of the cells, from 0: above it where a row comes in pieces
};

/// How much of a row is held in memory.
struct CsvLimit {
  size_t cells = 1 << 20;
  bool in_pieces = false;  // a longer row comes in pieces, else it is an Error
  std::string advice;      // on how to allow more
};

struct CsvFormat {
  char delimiter = ',';  // a blank stands for any number of blanks and tabs
  char comment = 0;      // begins a line that is passed over; 0: there are none
};

/// The text of a cell in a file, in quotes where it needs them.
std::string csv_cell(std::string_view text, char delimiter = ',');

/// Cells may stand in double quotes, which then may hold delimiters, line ends and doubled quotes.
/// Lines end in LF, CR LF or CR; blanks around a cell, blank lines and a byte order mark are passed
/// over.
class CsvReader {
 public:
  /// "-" is standard input.
  CsvReader(const std::string& path, CsvLimit limit, CsvFormat format = {});

  /// The next row or piece, valid until the next call; null at the end of the file.
  const CsvRow* next();

  const std::string& name() const { return source_.name(); }
  int64_t bytes_read() const { return source_.bytes_read(); }
  int64_t bytes_in_all() const { return source_.bytes_in_all(); }  // 0 where that is not known

  /// What the file begins with, some lines of it.
  std::string_view beginning() const { return beginning_; }

 private:
  bool is_blank(char c) const { return c == ' ' || (c == '\t' && format_.delimiter != '\t'); }
  char* skip_blanks(char* p) const;
  bool skip_empty_lines();
  bool parse_row();
  bool parse_cell();
  char* parse_quoted(char* p, std::string_view& cell);
  void end_line();
  bool fill();
  void make_room(char* keep);
  void drop_mark();
  [[noreturn]] void fail(const std::string& what) const;
  [[noreturn]] void fail_at_quote() const;

  ByteSource source_;
  CsvLimit limit_;
  CsvFormat format_;
  std::vector<char> buffer_;
  char *at_, *end_;  // what is not parsed yet; *end_ is a line end, to stop at
  char* row_begin_;  // of the row in the making
  CsvRow row_;
  bool in_row_ = false;  // cells of it were found
  bool after_cr_ = false, at_end_ = false;
  int64_t line_ = 1;
  std::string beginning_;
};

}  // namespace orv_cli
