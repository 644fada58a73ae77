// SPDX-License-Identifier: MIT
// What orv stats found, and how it is printed.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "distance_plot.hpp"
#include "histogram.hpp"
#include "stats_figures.hpp"
#include "stats_sample.hpp"

namespace orv_cli {

struct ColumnReport : Summary {
  std::string name;
  Histogram histogram;  // empty unless it was asked for
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
  std::vector<std::string> by;                   // names of columns
  std::vector<std::vector<std::string>> labels;  // of each group, one for each of these
  std::vector<Figure> figures;
  std::vector<double> values;  // of each group, of each column, each figure

  /// The figures of one group's part of a column.
  const double* of(size_t group, size_t column) const {
    const size_t columns = values.size() / (labels.size() * figures.size());
    return &values[(group * columns + column) * figures.size()];
  }
};

struct Report {
  std::string file;
  int64_t rows = 0, dropped = 0, weightless = 0;
  std::optional<int64_t> complete;     // rows that matrices are of
  std::optional<std::string> weights;  // the name of their column
  double weight_sum = 0;
  bool single = false;          // computed in floats
  std::vector<Figure> figures;  // that are told of each column
  std::vector<ColumnReport> columns;
  std::optional<GroupReport> groups;
  std::vector<MatrixReport> matrices;
  std::optional<DistancePlot> plot;
  std::vector<std::string> notes;  // for standard error
};

/// `format` is table, markdown, csv, json or jsonl.
void print_report(const Report& report, const std::string& format);

}  // namespace orv_cli
