// SPDX-License-Identifier: MIT
// The kinds of `orv random`.
#pragma once

#include <string>
#include <vector>

namespace orv_cli {

std::vector<std::string> random_kinds();

}  // namespace orv_cli
