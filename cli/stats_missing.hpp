// SPDX-License-Identifier: MIT
// orv stats --missing em: mean, covariance and correlation of maximum likelihood.
#pragma once

#include <string>
#include <vector>

#include "missing_table.hpp"
#include "stats_analysis.hpp"
#include "stats_report.hpp"

namespace orv_cli {

/// What does not go with it becomes an Error.
void check_em(const StatsOptions& options);

/// Adds them to a report, and how many iterations there were.
void report_em(const MissingTable& table, const std::vector<std::string>& names, Report& report);

}  // namespace orv_cli
