// SPDX-License-Identifier: MIT
// Robust mean and covariance of complete rows, and how far each row is from them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "stats_analysis.hpp"

namespace orv_cli {

/// Throws an Error where --robust doesn't go with other options.
void check_robust(const StatsOptions& options);

/// Adds tables of both means and scales, of both covariances and of distances, and a plot. `rows`
/// are the numbers of the sample's observations in the file.
template <class T>
void report_robust(const Sample<T>& sample, const std::vector<std::string>& names,
                   const std::vector<int64_t>& rows, const StatsOptions& options,
                   const SSThreadServices* services, Report& report);

}  // namespace orv_cli
