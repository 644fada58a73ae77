// What orv stats found, and how it is printed.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "distance_plot.hpp"
#include "stats_sample.hpp"

namespace orv_cli {

/// A result that is not defined, such as the deviation of one value, is NaN.
struct ColumnReport {
  std::string name;
  int64_t count, missing;
  double mean, standard_deviation, minimum, maximum, skewness, kurtosis;
  std::vector<double> quantiles;
};

struct MatrixReport {
  std::string title;
  std::vector<std::string> names;  // of rows and columns
  Matrix values;
  std::vector<std::string> columns = {};  // where they have other names than the rows
  std::string note = {};

  const std::vector<std::string>& heads() const { return columns.empty() ? names : columns; }
};

struct GroupReport {
  std::string by;
  std::vector<std::string> labels;
  Pooled results;
};

struct Report {
  std::string file;
  int64_t rows = 0, dropped = 0, weightless = 0;
  std::optional<std::string> weights;  // the name of their column
  double weight_sum = 0;
  bool single = false;         // computed in floats
  std::vector<double> orders;  // of the quantiles; none where they are left out
  std::vector<ColumnReport> columns;
  std::optional<GroupReport> groups;
  std::vector<MatrixReport> matrices;
  std::optional<DistancePlot> plot;
  std::vector<std::string> notes;  // for standard error
};

/// `format` is table, csv or json.
void print_report(const Report& report, const std::string& format);

}  // namespace orv_cli
