// SPDX-License-Identifier: MIT
// Reads the columns of a file, block by block, and computes their statistics.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "input.hpp"
#include "stats_report.hpp"

namespace orv_cli {

struct StatsOptions {
  InputOptions input;
  std::string select, exclude, weights, by, partial, given;  // columns; empty if not given
  std::string quantiles;  // orders; empty: quartiles, if there is room
  std::string figures;    // names; empty: a choice
  double confidence = 0.95;
  bool histogram = false;
  int32_t bins = 0;  // of a histogram; 0: as many as suit
  bool covariance = false, correlation = false;
  std::string robust;  // ogk or tbs
  bool outliers = false, mahalanobis = false, repair_correlation = false;
  double alpha = 0.05;            // of --outliers, for all rows together
  std::string start = "medians";  // or mean
  bool distances = false;         // a table of them
  std::string plot;               // file for a picture of them, or -
  double epsilon = 0;             // of ranks of quantiles; 0: exact while there is room
  std::string missing = "available";
  std::string format = "table";
  std::string precision = "d";
  int64_t memory = 0;  // MiB
  int32_t threads = 0;

  /// Whether rows are looked at as points, which needs all values of all columns.
  bool points() const { return !robust.empty() || outliers || mahalanobis; }
};

/// In floats or doubles. Every mistake in what was given becomes an Error.
template <class T>
Report analyse(const StatsOptions& options);

}  // namespace orv_cli
