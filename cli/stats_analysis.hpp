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
  std::string quantiles;                                     // empty: quartiles, if there is room
  bool covariance = false, correlation = false;
  std::string robust;  // ogk or tbs
  bool outliers = false, mahalanobis = false, repair_correlation = false;
  double alpha = 0.05;            // of --outliers, for all rows together
  std::string start = "medians";  // or mean
  bool distances = false;         // a table of them
  std::string plot;               // file for a picture of them, or -
  std::string missing = "drop";
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
