// SPDX-License-Identifier: MIT
#include "csv.hpp"

#include <emmintrin.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

#include "error.hpp"
#include "input.hpp"

namespace orv_cli {
namespace {

constexpr size_t most_text = 1 << 28;  // of a row or piece
constexpr size_t first_size = 1 << 18;
constexpr size_t padding = 16;  // that find_stop may read beyond the end
constexpr size_t most_beginning = 4096;

bool is_line_end(char c) { return c == '\n' || c == '\r'; }

/// The first of delimiter, line end and quote; one is known to come.
char* find_stop(char* p, char delimiter) {
  const __m128i delimiters = _mm_set1_epi8(delimiter), quotes = _mm_set1_epi8('"');
  const __m128i tabs = _mm_set1_epi8(delimiter == ' ' ? '\t' : delimiter);
  const __m128i feeds = _mm_set1_epi8('\n'), returns = _mm_set1_epi8('\r');
  for (;; p += 16) {
    const __m128i text = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    const __m128i between =
        _mm_or_si128(_mm_cmpeq_epi8(text, delimiters), _mm_cmpeq_epi8(text, tabs));
    const __m128i ends = _mm_or_si128(_mm_cmpeq_epi8(text, feeds), _mm_cmpeq_epi8(text, returns));
    const __m128i stops = _mm_or_si128(_mm_or_si128(between, ends), _mm_cmpeq_epi8(text, quotes));
    const auto mask = static_cast<unsigned>(_mm_movemask_epi8(stops));
    if (mask != 0) return p + std::countr_zero(mask);
  }
}

}  // namespace

std::string csv_cell(std::string_view text, char delimiter) {
  const bool quoted = text.find(delimiter) != text.npos ||
                      text.find_first_of("\"\r\n") != text.npos || text.starts_with(' ') ||
                      text.ends_with(' ') ||
                      (delimiter == ' ' && (text.empty() || text.find('\t') != text.npos));
  if (!quoted) return std::string(text);
  std::string cell = "\"";
  for (const char c : text) cell.append(c == '"' ? 2 : 1, c);
  return cell + '"';
}

CsvReader::CsvReader(const std::string& path, CsvLimit limit, CsvFormat format)
    : source_(path), limit_(std::move(limit)), format_(format), buffer_(first_size + padding) {
  at_ = end_ = row_begin_ = buffer_.data();
  *end_ = '\n';
}

void CsvReader::fail(const std::string& what) const {
  throw Error("{}, line {}: {}", name(), line_, what);
}

void CsvReader::fail_at_quote() const {
  fail(
      "a quote within a cell, or text after the closing quote; a quote within a cell in quotes is "
      "doubled" +
      format_hint(beginning_, format_));
}

// ---- Bytes --------------------------------------------------------------------------------------

/// Moves what begins at `keep` to the front, of a larger buffer where it fills most of this one.
void CsvReader::make_room(char* keep) {
  const auto kept = static_cast<size_t>(end_ - keep), size = buffer_.size() - padding;
  std::vector<char> larger;
  char* front = buffer_.data();
  if (kept > size / 2) {
    if (kept > most_text) {
      fail(fmt::format("a row of more than {} MiB; is a quote left open?", most_text >> 20));
    }
    larger.resize(2 * size + padding);
    front = larger.data();
  }
  std::memmove(front, keep, kept);
  for (std::string_view& cell : row_.cells) cell = {front + (cell.data() - keep), cell.size()};
  at_ = front + (at_ - keep);
  end_ = front + kept;
  row_begin_ = front;
  if (!larger.empty()) buffer_ = std::move(larger);  // its memory moves with it
}

void CsvReader::drop_mark() {
  constexpr std::string_view mark = "\xEF\xBB\xBF";
  const std::string_view text(at_, static_cast<size_t>(end_ - at_));
  beginning_ = text.substr(0, most_beginning);
  if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) {
    fail("the text is UTF-16; 'iconv -f UTF-16 -t UTF-8' makes it readable");
  }
  if (text.starts_with(mark)) at_ += mark.size();
}

/// Reads more behind what a row has so far; false if that is whole, the file being at its end. A
/// long row is read a buffer at a time, so that no cell of it is looked at often.
bool CsvReader::fill() {
  const bool first = bytes_read() == 0;
  if (at_end_) return false;
  make_room(in_row_ ? row_begin_ : at_);
  char* const limit = buffer_.data() + buffer_.size() - padding;
  const size_t enough = in_row_ && end_ - row_begin_ > static_cast<ptrdiff_t>(first_size / 4)
                            ? static_cast<size_t>(limit - end_)
                        : first ? size_t{4}
                                : size_t{1};
  for (size_t size = 0; size < enough && !at_end_;) {
    const size_t got = source_.read(end_, static_cast<size_t>(limit - end_));
    size += got;
    end_ += got;
    at_end_ = got == 0;
  }
  if (first) drop_mark();
  if (at_end_ && (in_row_ || at_ != end_)) *end_++ = '\n';
  *end_ = '\n';
  return true;
}

// ---- Rows ---------------------------------------------------------------------------------------

char* CsvReader::skip_blanks(char* p) const {
  while (is_blank(*p)) ++p;
  return p;
}

/// Passes the line end at at_.
void CsvReader::end_line() {
  after_cr_ = *at_++ == '\r';
  ++line_;
}

/// Blank lines and comments before a row; false if what is there ends too soon to tell.
bool CsvReader::skip_empty_lines() {
  for (;;) {
    if (after_cr_ && at_ != end_) {
      at_ += *at_ == '\n';
      after_cr_ = false;
    }
    char* p = skip_blanks(at_);
    if (format_.comment != 0 && *p == format_.comment) p = std::find_if(p, end_, is_line_end);
    if (p == end_) return false;
    if (!is_line_end(*p)) return true;
    at_ = p;
    end_line();
  }
}

/// The text of the cell whose opening quote is at p, without its quotes; where it goes on behind
/// it, or null if it ends too soon.
char* CsvReader::parse_quoted(char* p, std::string_view& cell) {
  char* const begin = ++p;
  bool doubled = false;
  for (;; p += 2, doubled = true) {
    p = static_cast<char*>(std::memchr(p, '"', static_cast<size_t>(end_ - p)));
    if (p == nullptr || p + 1 == end_) return nullptr;
    if (p[1] != '"') break;
  }
  char* const after = skip_blanks(p + 1);
  if (after == end_) return nullptr;
  const bool follows = is_line_end(*after) || *after == format_.delimiter ||
                       (format_.delimiter == ' ' && after != p + 1);
  if (!follows) {
    fail_at_quote();
  }
  line_ += std::count(begin, p, '\n');
  char* text_end = p;
  if (doubled) {
    text_end = begin;
    for (const char* from = begin; from != p; ++from) {
      *text_end++ = *from;
      from += *from == '"';
    }
  }
  cell = {begin, static_cast<size_t>(text_end - begin)};
  return after;
}

/// Adds the cell at at_, which then is at what ends it; false if it ends too soon.
bool CsvReader::parse_cell() {
  char* const begin = skip_blanks(at_);
  std::string_view cell;
  char* stop;
  if (*begin == '"') {
    stop = parse_quoted(begin, cell);
    if (stop == nullptr) return false;
  } else {
    stop = find_stop(begin, format_.delimiter);
    if (stop == end_) return false;
    if (*stop == '"') {
      fail_at_quote();
    }
    char* text_end = stop;
    while (text_end != begin && is_blank(text_end[-1])) --text_end;
    cell = {begin, static_cast<size_t>(text_end - begin)};
  }
  if (format_.delimiter == ' ') {  // those before a line's end are none
    stop = skip_blanks(stop);
    if (stop == end_) return false;
    if (!is_line_end(*stop)) --stop;
  }
  row_.cells.push_back(cell);
  at_ = stop;
  return true;
}

/// Goes on with the row that at_ is in; false if it ends too soon.
bool CsvReader::parse_row() {
  for (;;) {
    if (row_.cells.size() == limit_.cells) {
      if (limit_.in_pieces) return true;
      fail(fmt::format("a row of more than {} columns{}", limit_.cells, limit_.advice));
    }
    if (!parse_cell()) return false;
    if (is_line_end(*at_)) {
      in_row_ = false;
      end_line();
      return true;
    }
    ++at_;
  }
}

const CsvRow* CsvReader::next() {
  if (in_row_) {  // a piece of it was given
    row_.first_column += row_.cells.size();
    row_begin_ = at_;
  }
  row_.cells.clear();
  for (;;) {
    if (!in_row_ && skip_empty_lines()) {
      in_row_ = true;
      row_.line = line_;
      row_.first_column = 0;
      row_begin_ = at_;
    }
    if (in_row_ && parse_row()) return &row_;
    if (fill()) continue;
    if (!in_row_) return nullptr;
    fail("a quote is opened and not closed");
  }
}

}  // namespace orv_cli
