// SPDX-License-Identifier: MIT
#include "error.hpp"

namespace orv_cli {

std::string one_line(std::string_view text, size_t limit) {
  std::string result(text.substr(0, limit));
  for (char& c : result) {
    const bool control = static_cast<unsigned char>(c) < ' ' || c == 0x7F;
    if (control) c = '?';
  }
  return result + (text.size() > limit ? "..." : "");
}

std::string in_quotes(std::string_view text) { return fmt::format("'{}'", one_line(text)); }

}  // namespace orv_cli
