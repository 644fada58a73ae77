// SPDX-License-Identifier: MIT
// What the text of a cell means.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orv_cli {

/// False if the text is not all of a number, as strtod reads it.
template <class T>
bool parse(std::string_view text, T& value);

/// The next word of the text, which is taken off it; empty at its end.
std::string_view next_word(std::string_view& text);

/// Texts with commas between, blanks around them left out: "a, b" has two.
std::vector<std::string> parts_of(const std::string& text);

/// How numbers are written, and which words stand for a missing one.
class CellFormat {
 public:
  static constexpr const char* missing_by_default = "NA,N/A,NaN,NULL,null,None,.,-";

  /// `missing` are words with commas between; an empty cell is missing in any case.
  explicit CellFormat(const std::string& missing = missing_by_default, char decimal = '.');

  bool is_missing(std::string_view text) const;

  template <class T>
  bool parse(std::string_view text, T& value) const;

  enum class Kind { number, missing, text };

  /// What the cell is; `value` is set for a number.
  template <class T>
  Kind read(std::string_view text, T& value) const;

  char decimal() const { return decimal_; }

 private:
  std::vector<std::string> missing_;
  char decimal_;
  bool some_are_numbers_ = false;  // words for a missing one such as -999
};

}  // namespace orv_cli
