#include "csv.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "error.hpp"

namespace orv_cli {
namespace {

bool is_blank(int c) { return c == ' ' || c == '\t'; }
bool ends_cell(int c) { return c == ',' || c == '\n' || c < 0; }

[[noreturn]] void throw_unreadable(const std::string& name) {
  throw Error("cannot read {}: {}; give a CSV file, or - for standard input", in_quotes(name),
              std::strerror(errno));
}

}  // namespace

CsvReader::CsvReader(const std::string& path)
    : name_(path == "-" ? "standard input" : one_line(path)),
      file_(path == "-" ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC)),
      buffer_(1 << 18) {
  if (file_ < 0) throw_unreadable(name_);
  struct stat status;
  if (fstat(file_, &status) == 0 && S_ISREG(status.st_mode)) size_ = status.st_size;
  for (const int byte : {0xEF, 0xBB, 0xBF}) {  // byte order mark
    if (peek() != byte) break;
    get();
  }
}

CsvReader::~CsvReader() { close(file_); }

bool CsvReader::fill() {
  ssize_t size;
  do {
    size = read(file_, buffer_.data(), buffer_.size());
  } while (size < 0 && errno == EINTR);
  if (size < 0) throw_unreadable(name_);
  bytes_ += size;
  at_ = buffer_.data();
  end_ = at_ + size;
  return size > 0;
}

int CsvReader::get() {
  int c = peek();
  if (c == end_of_file) return c;
  ++at_;
  if (c == '\r' && peek() == '\n') c = *at_++;
  if (c == '\n') ++line_;
  return c;
}

/// What follows an opening quote. Returns the character that ends the cell.
int CsvReader::read_quoted(std::string& cell) {
  const int64_t first_line = line_;
  for (;;) {
    const int c = get();
    if (c == end_of_file)
      throw Error("{}, line {}: a quote is opened and not closed", name_, first_line);
    if (c == '"' && peek() != '"') break;
    if (c == '"') get();  // a doubled quote is one quote
    cell += static_cast<char>(c);
  }
  int c = get();
  while (is_blank(c)) c = get();
  if (!ends_cell(c)) {
    throw Error(
        "{}, line {}: text after the closing quote of {}; a comma or the line's end may "
        "follow, a quote within a cell is doubled",
        name_, line_, in_quotes(cell));
  }
  return c;
}

/// Returns the character that ends the cell: a comma, '\n' or the end of the file.
int CsvReader::read_cell(std::string& cell) {
  int c = get();
  while (is_blank(c)) c = get();
  if (c == '"') return read_quoted(cell);
  while (!ends_cell(c)) {
    cell += static_cast<char>(c);
    const char* const start = at_;  // most cells end within the buffer
    while (at_ < end_ && *at_ != ',' && *at_ != '\n' && *at_ != '\r') ++at_;
    cell.append(start, at_);
    c = get();
  }
  while (!cell.empty() && is_blank(cell.back())) cell.pop_back();
  return c;
}

bool CsvReader::next(CsvRow& row) {
  for (;;) {
    row.line = line_;
    size_t count = 0;
    int end;
    do {  // into the strings of the row before, which have room already
      if (count == row.cells.size()) row.cells.emplace_back();
      row.cells[count].clear();
      end = read_cell(row.cells[count++]);
    } while (end == ',');
    row.cells.resize(count);
    const bool blank_line = row.cells.size() == 1 && row.cells[0].empty();
    if (!blank_line) return true;
    if (end == end_of_file) return false;
  }
}

}  // namespace orv_cli
