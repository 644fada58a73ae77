// Reads a file of comma-separated cells, row by row.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orv_cli {

struct CsvRow {
  std::vector<std::string> cells;
  int64_t line = 0;  // where the row begins, from 1
};

/// Cells may stand in double quotes, which then may hold commas, line ends and doubled quotes.
/// Lines end in LF or CR LF; blanks around a cell, blank lines and a byte order mark are passed
/// over.
class CsvReader {
 public:
  /// "-" is standard input.
  explicit CsvReader(const std::string& path);
  ~CsvReader();
  CsvReader(const CsvReader&) = delete;
  CsvReader& operator=(const CsvReader&) = delete;

  /// False at the end of the file.
  bool next(CsvRow& row);

  const std::string& name() const { return name_; }
  int64_t bytes_read() const { return bytes_ - (end_ - at_); }
  int64_t bytes_in_all() const { return size_; }  // 0 where that is not known

 private:
  bool fill();
  int peek() { return at_ < end_ || fill() ? static_cast<unsigned char>(*at_) : end_of_file; }
  int get();
  int read_cell(std::string& cell);
  int read_quoted(std::string& cell);

  static constexpr int end_of_file = -1;

  std::string name_;
  int file_;
  std::vector<char> buffer_;
  const char *at_ = nullptr, *end_ = nullptr;  // what of the buffer is left
  int64_t line_ = 1;
  int64_t bytes_ = 0;  // read into the buffer so far
  int64_t size_ = 0;
};

}  // namespace orv_cli
