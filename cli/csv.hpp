// Reads a file of comma-separated cells, row by row.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
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

  /// False at the end of the file.
  bool next(CsvRow& row);

  const std::string& name() const { return name_; }
  int64_t bytes_read() const { return bytes_; }
  int64_t bytes_in_all() const { return size_; }  // 0 where that is not known

 private:
  int get();
  int peek();
  int read_cell(std::string& cell);
  int read_quoted(std::string& cell);

  std::string name_;
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
  int64_t line_ = 1;
  int64_t bytes_ = 0;
  int64_t size_ = 0;
};

}  // namespace orv_cli
