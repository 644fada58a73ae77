// SPDX-License-Identifier: MIT
// A mistake in what the user gave: main prints it as one line and exits with code 2.
#pragma once

#include <fmt/format.h>

#include <stdexcept>
#include <string>
#include <string_view>

namespace orv_cli {

class Error : public std::runtime_error {
 public:
  template <class... Args>
  explicit Error(fmt::format_string<Args...> format, Args&&... args)
      : std::runtime_error(fmt::format(format, std::forward<Args>(args)...)) {}
};

/// Text from outside, fit for a message of one line: no control characters, cut where it is long.
std::string one_line(std::string_view text, size_t limit = 200);
std::string in_quotes(std::string_view text);

}  // namespace orv_cli
