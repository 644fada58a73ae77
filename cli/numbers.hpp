// SPDX-License-Identifier: MIT
// Numbers on the command line.
#pragma once

#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "error.hpp"
#include "random_streams.hpp"

namespace orv_cli {

/// The finite or whole number that is all of `text`; `what` is the argument.
template <class T>
T number(const std::string& what, const std::string& text) {
  if constexpr (std::is_integral_v<T>) {
    using Limits = std::numeric_limits<T>;
    return static_cast<T>(whole_number(what, text, Limits::min(), Limits::max()));
  } else {
    T value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end || !std::isfinite(value)) {
      throw Error("{}: {} is not a number that a {} holds; allowed are 2, -0.5, 1e-3", what,
                  in_quotes(text), std::is_same_v<T, float> ? "float" : "double");
    }
    return value;
  }
}

/// Numbers with commas between.
inline std::vector<double> number_list(const std::string& what, std::string_view text) {
  std::vector<double> numbers;
  for (size_t comma = 0; comma != text.npos;) {
    comma = text.find(',');
    numbers.push_back(number<double>(what, std::string(text.substr(0, comma))));
    text.remove_prefix(comma == text.npos ? text.size() : comma + 1);
  }
  return numbers;
}

}  // namespace orv_cli
