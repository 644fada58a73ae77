// SPDX-License-Identifier: MIT
#include "cells.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <type_traits>

namespace orv_cli {

/// The C locale holds: nothing here sets another.
template <class T>
bool parse(std::string_view text, T& value) {
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error == std::errc() && stop == end) return true;
  // What from_chars doesn't know: a plus sign, hexadecimal digits, what is out of range.
  const std::string copy(text);
  char* other_stop;
  if constexpr (std::is_same_v<T, float>) {
    value = std::strtof(copy.c_str(), &other_stop);
  } else {
    value = std::strtod(copy.c_str(), &other_stop);
  }
  return !text.empty() && other_stop == copy.c_str() + copy.size();
}

template bool parse<float>(std::string_view text, float& value);
template bool parse<double>(std::string_view text, double& value);

std::string_view next_word(std::string_view& text) {
  const auto is_blank = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
  const auto begin = std::ranges::find_if_not(text, is_blank);
  const auto end = std::find_if(begin, text.end(), is_blank);
  text = {end, text.end()};
  return {begin, end};
}

std::vector<std::string> parts_of(const std::string& text) {
  std::vector<std::string> parts;
  for (size_t start = 0; start <= text.size();) {
    const size_t end = std::min(text.find(',', start), text.size());
    std::string part = text.substr(start, end - start);
    part.erase(0, part.find_first_not_of(" \t"));
    part.erase(part.find_last_not_of(" \t") + 1);
    parts.push_back(std::move(part));
    start = end + 1;
  }
  return parts;
}

CellFormat::CellFormat(const std::string& missing, char decimal)
    : missing_(parts_of(missing)), decimal_(decimal) {
  some_are_numbers_ = std::ranges::any_of(missing_, [this](const std::string& word) {
    double value;
    return parse(word, value) && !std::isnan(value);
  });
}

bool CellFormat::is_missing(std::string_view text) const {
  return text.empty() || std::ranges::find(missing_, text) != missing_.end();
}

template <class T>
bool CellFormat::parse(std::string_view text, T& value) const {
  if (decimal_ == '.') return orv_cli::parse(text, value);
  if (text.find('.') != text.npos) return false;  // 1.234 may be meant as a thousand and more
  const size_t at = text.find(decimal_);
  if (at == text.npos) return orv_cli::parse(text, value);
  std::array<char, 64> copy;
  if (text.size() > copy.size()) return false;
  std::ranges::copy(text, copy.begin());
  copy[at] = '.';
  return orv_cli::parse({copy.data(), text.size()}, value);
}

template bool CellFormat::parse(std::string_view, float&) const;
template bool CellFormat::parse(std::string_view, double&) const;

template <class T>
CellFormat::Kind CellFormat::read(std::string_view text, T& value) const {
  const bool may_be_number = !text.empty() && !some_are_numbers_;
  if (may_be_number && text.back() >= '0' && text.back() <= '9' && parse(text, value)) {
    return Kind::number;
  }
  if (is_missing(text)) return Kind::missing;
  return parse(text, value) ? Kind::number : Kind::text;
}

template CellFormat::Kind CellFormat::read(std::string_view, float&) const;
template CellFormat::Kind CellFormat::read(std::string_view, double&) const;

}  // namespace orv_cli
