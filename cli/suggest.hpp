// SPDX-License-Identifier: MIT
// What a person may have meant.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orv_cli {

/// In lower case.
std::string lower(std::string_view text);

/// Whether few insertions, deletions and changes of a character lead from one to the other,
/// whatever their case.
bool is_close(std::string_view text, std::string_view name);

/// " (did you mean x, y?)" if there are names like the text, else nothing.
std::string did_you_mean(std::string_view text, const std::vector<std::string>& names);

}  // namespace orv_cli
