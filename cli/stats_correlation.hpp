// SPDX-License-Identifier: MIT
// A correlation matrix that is none, as pairs of columns with missing cells may make it.
#pragma once

#include <string>
#include <vector>

#include "stats_report.hpp"

namespace orv_cli {

/// Adds the nearest like it that is positive definite, its least eigenvalue before and after, and
/// what changed most. In floats or doubles.
template <class T>
void report_repaired_correlation(const Matrix& correlation, const std::vector<std::string>& names,
                                 const SSThreadServices* services, Report& report);

}  // namespace orv_cli
