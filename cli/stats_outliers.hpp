// SPDX-License-Identifier: MIT
// Which rows are outliers, and how far each row is from the mean.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "stats_analysis.hpp"

namespace orv_cli {

/// Throws an Error where --outliers or --mahalanobis don't go with other options.
void check_outliers(const StatsOptions& options);

/// Adds means and deviations of all and of good rows, the outliers with their values, each row's
/// distance from the good ones where that is wanted, and a plot. `rows` are the numbers of the
/// sample's observations in the file.
template <class T>
void report_outliers(const Sample<T>& sample, const std::vector<std::string>& names,
                     const std::vector<int64_t>& rows, const StatsOptions& options,
                     const SSThreadServices* services, Report& report);

/// Adds each row's Mahalanobis distance from the mean, and a plot.
template <class T>
void report_mahalanobis(const Sample<T>& sample, const std::vector<int64_t>& rows, Report& report);

}  // namespace orv_cli
