// SPDX-License-Identifier: MIT
// Complex numbers as people write them.
#pragma once

#include <string_view>

namespace orv_cli {

/// "3+4i", "3", "-4i", "j", or both parts with a comma between them. False if the text is neither.
template <class T>
bool parse_complex(std::string_view text, T& re, T& im);

/// A number with a digit, real or complex: unlike a name such as i.
bool is_complex_number(std::string_view text);

/// Whether the text has an imaginary unit or a comma, and so tells both parts.
bool has_both_parts(std::string_view text);

}  // namespace orv_cli
