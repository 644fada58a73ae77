// SPDX-License-Identifier: MIT
#include "stats_outliers.hpp"

#include <fmt/format.h>
#include <orv/scalar.h>
#include <orv/task.hpp>

#include <algorithm>
#include <cmath>
#include <new>

#include "error.hpp"
#include "stats_distances.hpp"

namespace orv_cli {
namespace {

template <class T>
using Entries = orv::entries<T>;

constexpr double accuracy = 0.005;  // relative change of the number of good rows

[[noreturn]] void fail(int32_t status, int64_t good, const StatsOptions& options) {
  switch (status) {
    case SS_NO_MEMORY:
      throw std::bad_alloc();
    case SS_NOT_CONVERGED:
      throw Error(
          "--outliers: {} good rows are left with --alpha {} and --start {}, no more than it began "
          "with; less alpha, the other start or fewer columns (--select) keep more",
          good, options.alpha, options.start);
    default:
      throw Error("--outliers: columns depend on each other (status {}); --select fewer", status);
  }
}

/// Rows that are no outliers.
template <class T>
struct Good {
  std::vector<T> weights;  // 0 for an outlier
  int64_t count = 0;
  Estimate<T> estimate;
};

template <class T>
Good<T> find_good(const std::vector<T>& values, std::span<const T> weights, size_t p,
                  const StatsOptions& options, const SSThreadServices* services) {
  const auto n = static_cast<int64_t>(values.size() / p);
  const int64_t storage = SS_MATRIX_FULL, count = 3;
  const T parameters[] = {static_cast<T>(options.start == "medians" ? 2 : 1),
                          static_cast<T>(options.alpha / static_cast<double>(n)),
                          static_cast<T>(accuracy)};
  Good<T> good = {
      std::vector<T>(static_cast<size_t>(n)), 0, {std::vector<T>(p), std::vector<T>(p * p)}};
  RowsTask rows(std::span<const T>(values), p);
  SSTask& task = rows.task;
  task.weights = weights.empty() ? nullptr : weights.data();
  task.outlier_param_count = &count;
  task.outlier_params = parameters;
  task.outlier_weights = good.weights.data();
  int32_t status = Entries<T>::outliers(&task, 0, SS_METHOD_BACON, services);
  good.count = n - std::ranges::count(good.weights, T(0));
  if (status != SS_OK) fail(status, good.count, options);

  task.weights = good.weights.data();
  task.mean = good.estimate.mean.data();
  task.cov = good.estimate.cov.data();
  task.cov_storage = &storage;
  status = Entries<T>::basic(&task, SS_EST_COV, SS_METHOD_ONE_PASS, services);
  if (status != SS_OK) fail(status, good.count, options);
  return good;
}

/// The threshold of the last round, had it not been the last.
double cutoff_of(size_t variables, size_t rows, int64_t good, double alpha) {
  const auto p = static_cast<double>(variables), n = static_cast<double>(rows);
  const auto r = static_cast<double>(good);
  const double h = std::floor((n + p + 1) / 2);
  const double c_np = 1 + (p + 1) / (n - p) + 2 / (n - 1 - 3 * p);
  const double c_hr = std::max(0.0, (h - r) / (h + r));
  return (c_np + c_hr) * std::sqrt(__zokdChi2ICDF(p, 1 - alpha / n));
}

template <class T>
MatrixReport means_of(const Estimate<T>& all, const Estimate<T>& good,
                      const std::vector<std::string>& names) {
  MatrixReport table = {"Mean and deviation of all and of good rows",
                        names,
                        {},
                        {"mean", "good mean", "std. deviation", "good std. dev."}};
  for (size_t j = 0; j < names.size(); ++j) {
    const size_t diagonal = j * (names.size() + 1);
    for (const T x :
         {all.mean[j], good.mean[j], std::sqrt(all.cov[diagonal]), std::sqrt(good.cov[diagonal])}) {
      table.values.push_back(static_cast<double>(x));
    }
  }
  return table;
}

/// Outliers with their distances and values.
template <class T>
MatrixReport outliers_of(const Sample<T>& sample, const std::vector<std::string>& names,
                         const std::vector<T>& weights, const DistancePlot& plot) {
  MatrixReport table = {"Outliers by row", {}, {}, {"distance"}};
  table.columns.insert(table.columns.end(), names.begin(), names.end());
  for (size_t i = 0; i < weights.size(); ++i) {
    if (weights[i] != 0) continue;
    table.names.push_back(plot.labels[i]);
    table.values.push_back(plot.distances[i]);
    const auto row = sample.values().subspan(i * names.size(), names.size());
    table.values.insert(table.values.end(), row.begin(), row.end());
  }
  return table;
}

template <class T>
MatrixReport flags_of(const std::vector<T>& weights, const DistancePlot& plot) {
  MatrixReport table = {
      "Distances by row from good rows", plot.labels, {}, {"distance", "outlier"}};
  for (size_t i = 0; i < weights.size(); ++i) {
    table.values.push_back(plot.distances[i]);
    table.values.push_back(weights[i] == 0 ? 1 : 0);
  }
  return table;
}

std::vector<std::string> labels_of(const std::vector<int64_t>& rows) {
  std::vector<std::string> labels;
  for (const int64_t row : rows) labels.push_back(std::to_string(row));
  return labels;
}

}  // namespace

void check_outliers(const StatsOptions& options) {
  const char* const option = options.outliers ? "--outliers" : "--mahalanobis";
  if (options.missing == "pairwise") {
    throw Error("--missing pairwise: {} needs complete rows; allowed are drop and fail", option);
  }
  if (!(options.alpha > 0 && options.alpha < 1)) {
    throw Error("--alpha {}: not a probability; allowed are numbers between 0 and 1",
                options.alpha);
  }
}

template <class T>
void report_outliers(const Sample<T>& sample, const std::vector<std::string>& names,
                     const std::vector<int64_t>& rows, const StatsOptions& options,
                     const SSThreadServices* services, Report& report) {
  const size_t p = sample.variables(), n = rows.size();
  if (n < 5 * p) {
    throw Error("--outliers: {} complete rows of {} columns; needed are {} or more", n, p, 5 * p);
  }
  // The first rows are those near the medians, by which a column counts the more the larger its
  // numbers are.
  const std::vector<ColumnUnit> units = units_of(sample, names, "--outliers", services);
  const std::vector<T> scaled = in_units(sample, units);
  Good<T> good = find_good<T>(scaled, sample.weights(), p, options, services);
  DistancePlot plot = {distances_of<T>(scaled, good.estimate),
                       cutoff_of(p, n, good.count, options.alpha), labels_of(rows)};
  if (plot.distances.empty()) fail(SS_NO_POSITIVE_EIGENVALUE, good.count, options);
  take_units_off(good.estimate, units);

  MatrixReport means = means_of(classical(sample), good.estimate, names);
  means.note = fmt::format("{} of {} rows are outliers (alpha {}, {:.3g} a row; start {})",
                           static_cast<int64_t>(n) - good.count, n, options.alpha,
                           options.alpha / static_cast<double>(n), options.start);
  report.matrices.push_back(std::move(means));
  if (good.count < static_cast<int64_t>(n)) {
    report.matrices.push_back(outliers_of(sample, names, good.weights, plot));
  }
  if (options.distances) report.matrices.push_back(flags_of(good.weights, plot));
  report.plot = std::move(plot);
}

template <class T>
void report_mahalanobis(const Sample<T>& sample, const std::vector<int64_t>& rows, Report& report) {
  const auto p = static_cast<double>(sample.variables());
  DistancePlot plot = {distances_of(sample.values(), classical(sample)),
                       std::sqrt(__zokdChi2ICDF(p, 0.975)), labels_of(rows)};
  if (plot.distances.empty()) {
    throw Error("--mahalanobis: columns don't vary or depend on each other; --select fewer");
  }
  MatrixReport table = {"Mahalanobis distances by row",
                        plot.labels,
                        {},
                        {"distance", "probability", "beyond"},
                        beyond_text(plot)};
  for (const double d : plot.distances) {
    table.values.push_back(d);
    table.values.push_back(1 - __zokdChi2CDF(p, d * d));
    table.values.push_back(d <= plot.cutoff ? 0 : 1);
  }
  report.matrices.push_back(std::move(table));
  report.plot = std::move(plot);
}

#define ORV_INSTANCES(T)                                                              \
  template void report_outliers<T>(const Sample<T>&, const std::vector<std::string>&, \
                                   const std::vector<int64_t>&, const StatsOptions&,  \
                                   const SSThreadServices*, Report&);                 \
  template void report_mahalanobis<T>(const Sample<T>&, const std::vector<int64_t>&, Report&);
ORV_INSTANCES(float)
ORV_INSTANCES(double)
#undef ORV_INSTANCES

}  // namespace orv_cli
