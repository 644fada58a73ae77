// Reads a file of comma-separated cells, row by row.
#pragma once

#include <csv.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orv_cli {

struct CsvRow {
  std::vector<std::string> cells;
  int64_t line = 0;         // where the row begins, from 1
  size_t first_column = 0;  // of the cells, from 0: above it where a row comes in pieces
};

/// How much of a row is held in memory.
struct CsvLimit {
  size_t cells = 1 << 20;
  bool in_pieces = false;  // a longer row comes in pieces, else it is an Error
  std::string advice;      // on how to allow more
};

/// Cells may stand in double quotes, which then may hold commas, line ends and doubled quotes.
/// Lines end in LF, CR LF or CR; blanks around a cell, blank lines and a byte order mark are passed
/// over.
class CsvReader {
 public:
  /// "-" is standard input.
  CsvReader(const std::string& path, CsvLimit limit);
  ~CsvReader();
  CsvReader(const CsvReader&) = delete;
  CsvReader& operator=(const CsvReader&) = delete;

  /// The next row or piece, valid until the next call; null at the end of the file.
  const CsvRow* next();

  const std::string& name() const { return name_; }
  int64_t bytes_read() const { return bytes_; }
  int64_t bytes_in_all() const { return size_; }  // 0 where that is not known

 private:
  std::string_view read_some();
  void fill();
  void add_cell(std::string_view text);
  void end_line(int terminator);
  void end_piece();

  std::string name_;
  CsvLimit limit_;
  int file_;
  csv_parser parser_;
  std::vector<char> buffer_;
  std::vector<CsvRow> rows_;             // parsed ahead; their strings are used again
  size_t row_count_ = 0, next_row_ = 0;  // of them
  size_t cell_count_ = 0;                // of the row in the making, or of its last piece
  size_t text_size_ = 0;                 // of these cells
  size_t first_column_ = 0;              // of that piece
  int64_t line_ = 1;
  bool after_cr_ = false, at_end_ = false;
  std::string fault_;  // that ends the file in line_, after the rows parsed ahead
  int64_t bytes_ = 0;
  int64_t size_ = 0;
};

}  // namespace orv_cli
