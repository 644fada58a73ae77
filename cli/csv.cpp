#include "csv.hpp"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "error.hpp"

namespace orv_cli {
namespace {

bool is_blank(int c) { return c == ' ' || c == '\t'; }
bool ends_cell(int c) { return c == ',' || c == '\n' || c == EOF; }

[[noreturn]] void throw_unreadable(const std::string& name) {
  throw Error("cannot read {}: {}; give a CSV file, or - for standard input", in_quotes(name),
              std::strerror(errno));
}

}  // namespace

CsvReader::CsvReader(const std::string& path)
    : name_(path == "-" ? "standard input" : one_line(path)),
      file_(path == "-" ? stdin : std::fopen(path.c_str(), "rb"), &std::fclose) {
  if (!file_) throw_unreadable(name_);
  struct stat status;
  if (fstat(fileno(file_.get()), &status) == 0 && S_ISREG(status.st_mode)) size_ = status.st_size;
  for (const int byte : {0xEF, 0xBB, 0xBF}) {  // byte order mark
    if (peek() != byte) break;
    get();
  }
}

int CsvReader::peek() { return std::ungetc(getc_unlocked(file_.get()), file_.get()); }

int CsvReader::get() {
  int c = getc_unlocked(file_.get());
  if (c == EOF && std::ferror(file_.get())) throw_unreadable(name_);
  ++bytes_;
  if (c == '\r' && peek() == '\n') {
    c = getc_unlocked(file_.get());
    ++bytes_;
  }
  if (c == '\n') ++line_;
  return c;
}

/// What follows an opening quote. Returns the character that ends the cell.
int CsvReader::read_quoted(std::string& cell) {
  const int64_t first_line = line_;
  for (;;) {
    const int c = get();
    if (c == EOF) throw Error("{}, line {}: a quote is opened and not closed", name_, first_line);
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

/// Returns the character that ends the cell: a comma, '\n' or EOF.
int CsvReader::read_cell(std::string& cell) {
  int c = get();
  while (is_blank(c)) c = get();
  if (c == '"') return read_quoted(cell);
  for (; !ends_cell(c); c = get()) cell += static_cast<char>(c);
  while (!cell.empty() && is_blank(cell.back())) cell.pop_back();
  return c;
}

bool CsvReader::next(CsvRow& row) {
  for (;;) {
    row.cells.clear();
    row.line = line_;
    int end;
    do {
      end = read_cell(row.cells.emplace_back());
    } while (end == ',');
    const bool blank_line = row.cells.size() == 1 && row.cells[0].empty();
    if (!blank_line) return true;
    if (end == EOF) return false;
  }
}

}  // namespace orv_cli
