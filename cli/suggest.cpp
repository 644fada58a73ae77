// SPDX-License-Identifier: MIT
#include "suggest.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cctype>
#include <numeric>
#include <utility>

#include "error.hpp"

namespace orv_cli {
namespace {

/// Fewest insertions, deletions and changes of a character that lead from one text to the other.
size_t edit_distance(std::string_view from, std::string_view to) {
  std::vector<size_t> row(to.size() + 1);
  std::iota(row.begin(), row.end(), size_t{0});
  for (size_t i = 0; i < from.size(); ++i) {
    size_t diagonal = std::exchange(row[0], i + 1);
    for (size_t j = 0; j < to.size(); ++j) {
      const size_t change = diagonal + (from[i] != to[j]);
      diagonal = row[j + 1];
      row[j + 1] = std::min({row[j] + 1, diagonal + 1, change});
    }
  }
  return row.back();
}

}  // namespace

std::string lower(std::string_view text) {
  std::string result(text);
  for (char& c : result) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return result;
}

bool is_close(std::string_view text, std::string_view name) {
  constexpr size_t longest = 100;  // that a mistyped name may be
  if (text.size() > longest || name.size() > longest) return false;
  const size_t allowed = text.size() < 2 ? 0 : text.size() < 4 ? 1 : 2;
  return edit_distance(lower(text), lower(name)) <= allowed;
}

std::string did_you_mean(std::string_view text, const std::vector<std::string>& names) {
  std::vector<std::string> close;
  for (const std::string& name : names) {
    if (close.size() < 5 && is_close(text, name)) close.push_back(one_line(name, 40));
  }
  if (close.empty()) return "";
  return fmt::format(" (did you mean {}?)", fmt::join(close, ", "));
}

}  // namespace orv_cli
