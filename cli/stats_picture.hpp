// SPDX-License-Identifier: MIT
// Pictures of the columns of a table.
#pragma once

#include <string>

#include "stats_report.hpp"

namespace orv_cli {

/// A panel for each column: its histogram, and above it a box from the first to the third quartile
/// with a line at the median, whiskers to the extremes and a point at the mean.
void draw_columns(const Report& report, const std::string& path);

}  // namespace orv_cli
