// SPDX-License-Identifier: MIT
#include "complex_text.hpp"

#include <string>

#include "columns.hpp"

namespace orv_cli {
namespace {

constexpr std::string_view units = "iIjJ";

std::string_view without_blanks(std::string_view text) {
  const size_t first = text.find_first_not_of(" \t"), last = text.find_last_not_of(" \t");
  return first == text.npos ? "" : text.substr(first, last - first + 1);
}

/// Where the imaginary part's sign stands; 0 without a real part. A sign after an e or p belongs to
/// an exponent.
size_t find_imaginary(std::string_view text) {
  for (size_t i = text.size(); i-- > 1;) {
    const bool in_exponent = std::string_view("eEpP").find(text[i - 1]) != text.npos;
    if ((text[i] == '+' || text[i] == '-') && !in_exponent) return i;
  }
  return 0;
}

template <class T>
bool parse_imaginary(std::string_view text, T& im) {
  if (text.empty() || text == "+" || text == "-") {
    im = text == "-" ? T(-1) : T(1);
    return true;
  }
  return parse(text, im);
}

}  // namespace

bool has_both_parts(std::string_view text) {
  text = without_blanks(text);
  return text.find(',') != text.npos || (!text.empty() && units.find(text.back()) != text.npos);
}

template <class T>
bool parse_complex(std::string_view text, T& re, T& im) {
  text = without_blanks(text);
  re = im = 0;
  if (!has_both_parts(text)) return parse(text, re);
  if (const size_t comma = text.find(','); comma != text.npos) {
    return parse(without_blanks(text.substr(0, comma)), re) &&
           parse(without_blanks(text.substr(comma + 1)), im);
  }
  text.remove_suffix(1);
  const size_t sign = find_imaginary(text);
  const std::string_view real = without_blanks(text.substr(0, sign));
  if (sign > 0 && !parse(real, re)) return false;
  std::string imaginary(text.substr(sign));
  std::erase(imaginary, ' ');
  return parse_imaginary<T>(imaginary, im);
}

template bool parse_complex(std::string_view text, float& re, float& im);
template bool parse_complex(std::string_view text, double& re, double& im);

bool is_complex_number(std::string_view text) {
  double re, im;
  return text.find_first_of("0123456789") != text.npos && parse_complex(text, re, im);
}

}  // namespace orv_cli
