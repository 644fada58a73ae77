#include "csv.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <string_view>
#include <utility>

#include "error.hpp"

namespace orv_cli {
namespace {

constexpr size_t most_text = 1 << 28;  // of a row or piece

[[noreturn]] void throw_unreadable(const std::string& name) {
  throw Error("cannot read {}: {}; give a CSV file, or - for standard input", in_quotes(name),
              std::strerror(errno));
}

}  // namespace

CsvReader::CsvReader(const std::string& path, CsvLimit limit)
    : name_(path == "-" ? "standard input" : one_line(path)),
      limit_(std::move(limit)),
      file_(path == "-" ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC)),
      buffer_(1 << 16) {
  if (file_ < 0) throw_unreadable(name_);
  struct stat status;
  if (fstat(file_, &status) == 0 && S_ISREG(status.st_mode)) size_ = status.st_size;
  csv_init(&parser_, CSV_STRICT | CSV_STRICT_FINI | CSV_REPALL_NL);
  csv_set_blk_size(&parser_, 4096);
}

CsvReader::~CsvReader() {
  csv_free(&parser_);
  close(file_);
}

/// What comes next, or nothing at the end. A pipe may bring less than the byte order mark at once.
std::string_view CsvReader::read_some() {
  constexpr std::string_view mark = "\xEF\xBB\xBF";
  const bool at_start = bytes_ == 0;
  size_t size = 0;
  for (ssize_t got = 1; got != 0 && size < (at_start ? mark.size() : 1);) {
    got = read(file_, buffer_.data() + size, buffer_.size() - size);
    if (got < 0 && errno != EINTR) throw_unreadable(name_);
    if (got > 0) size += static_cast<size_t>(got);
  }
  bytes_ += static_cast<int64_t>(size);
  std::string_view text(buffer_.data(), size);
  if (at_start && text.starts_with(mark)) text.remove_prefix(mark.size());
  return text;
}

void CsvReader::add_cell(std::string_view text) {
  if (!fault_.empty()) return;
  if (cell_count_ == limit_.cells) {
    if (!limit_.in_pieces) {
      fault_ = fmt::format("a row of more than {} columns{}", limit_.cells, limit_.advice);
      return;
    }
    end_piece();
  }
  if (row_count_ == rows_.size()) rows_.emplace_back();
  CsvRow& row = rows_[row_count_];
  if (cell_count_ == 0) {
    row.line = line_;
    row.first_column = first_column_;
  }
  if (cell_count_ == row.cells.size()) row.cells.emplace_back();
  row.cells[cell_count_++] = text;
  text_size_ += text.size();
  line_ += std::ranges::count(text, '\n');
  after_cr_ = false;
}

void CsvReader::end_piece() {
  rows_[row_count_++].cells.resize(cell_count_);
  first_column_ += cell_count_;
  cell_count_ = text_size_ = 0;
}

/// After the last cell of a row, and for blank lines. CR LF comes as two ends.
void CsvReader::end_line(int terminator) {
  if (!fault_.empty()) return;
  if (!(terminator == '\n' && after_cr_)) ++line_;
  after_cr_ = terminator == '\r';
  if (cell_count_ > 0) end_piece();
  first_column_ = 0;
}

/// Parses what comes next, until at least one row is whole.
void CsvReader::fill() {
  const auto take_cell = [](void* text, size_t size, void* reader) {
    static_cast<CsvReader*>(reader)->add_cell({static_cast<char*>(text), size});
  };
  const auto take_end = [](int terminator, void* reader) {
    static_cast<CsvReader*>(reader)->end_line(terminator);
  };
  if (cell_count_ > 0) std::swap(rows_[0], rows_[row_count_]);  // begun, to be gone on with
  row_count_ = next_row_ = 0;
  while (row_count_ == 0 && !at_end_) {
    const std::string_view text = read_some();
    at_end_ = text.empty();
    const bool good = at_end_ ? csv_fini(&parser_, take_cell, take_end, this) == 0
                              : csv_parse(&parser_, text.data(), text.size(), take_cell, take_end,
                                          this) == text.size();
    if (!good && csv_error(&parser_) == CSV_ENOMEM) throw std::bad_alloc();
    if (!good && fault_.empty()) {
      fault_ = at_end_ ? "a quote is opened and not closed"
                       : "a quote within a cell, or text after the closing quote; a quote within a "
                         "cell in quotes is doubled";
    }
    if (text_size_ + parser_.entry_pos > most_text && fault_.empty()) {
      fault_ = fmt::format("a row of more than {} MiB; is a quote left open?", most_text >> 20);
    }
    at_end_ |= !fault_.empty();
  }
}

const CsvRow* CsvReader::next() {
  if (next_row_ == row_count_) fill();
  if (next_row_ < row_count_) return &rows_[next_row_++];
  if (fault_.empty()) return nullptr;
  throw Error("{}, line {}: {}", name_, line_, fault_);
}

}  // namespace orv_cli
