// SPDX-License-Identifier: MIT
#include "stats_robust.hpp"

#include <fmt/format.h>
#include <orv/scalar.h>
#include <orv/task.hpp>

#include <cmath>
#include <new>

#include "error.hpp"
#include "stats_distances.hpp"

namespace orv_cli {
namespace {

template <class T>
using Entries = orv::entries<T>;

/// The square of the mean's way, in units of the scale, at which iterations end.
template <class T>
constexpr T close = T(1e-10);
template <>
constexpr float close<float> = 1e-8f;
constexpr int most_iterations = 1000;

std::string at_option(const StatsOptions& options) { return "--robust " + options.robust; }

[[noreturn]] void fail(int32_t status, const StatsOptions& options) {
  switch (status) {
    case SS_NO_MEMORY:
      throw std::bad_alloc();
    case SS_OGK_FAILED:
      throw Error("{}: values are too far from each other", at_option(options));
    default:
      throw Error(
          "{}: columns depend on each other in the rows that are no outliers (status {}); --select "
          "fewer",
          at_option(options), status);
  }
}

template <class T>
Estimate<T> estimate(const Sample<T>& sample, const std::vector<ColumnUnit>& units,
                     const StatsOptions& options, const SSThreadServices* services) {
  const size_t p = sample.variables();
  const std::vector<T> scaled = in_units(sample, units);
  Estimate<T> e = {std::vector<T>(p), std::vector<T>(p * p)};
  const T iterations = options.robust == "ogk" ? 0 : most_iterations;
  const T parameters[] = {T(0.5), T(0.001), close<T>, iterations};
  const int64_t storage = SS_MATRIX_FULL, count = std::size(parameters);
  RowsTask rows(std::span<const T>(scaled), p);
  SSTask& task = rows.task;
  task.robust_param_count = &count;
  task.robust_params = parameters;
  task.robust_mean = e.mean.data();
  task.robust_cov = e.cov.data();
  task.robust_cov_storage = &storage;
  const int32_t status = Entries<T>::robust_covariance(&task, 0, SS_METHOD_TBS, services);
  if (status != SS_OK) fail(status, options);
  take_units_off(e, units);
  return e;
}

}  // namespace

void check_robust(const StatsOptions& options) {
  if (options.missing == "pairwise") {
    throw Error("--missing pairwise: {} needs complete rows; allowed are drop and fail",
                at_option(options));
  }
  if (!options.weights.empty()) {
    throw Error("--weights {}: {} takes no weights", in_quotes(options.weights),
                at_option(options));
  }
}

template <class T>
void report_robust(const Sample<T>& sample, const std::vector<std::string>& names,
                   const std::vector<int64_t>& rows, const StatsOptions& options,
                   const SSThreadServices* services, Report& report) {
  const size_t p = sample.variables();
  if (rows.size() <= 2 * p) {
    throw Error("{}: {} complete rows of {} columns; needed are more than {}", at_option(options),
                rows.size(), p, 2 * p);
  }
  const Estimate<T> robust =
      estimate(sample, units_of(sample, names, at_option(options), services), options, services);
  const Estimate<T> plain = classical(sample);
  const std::vector<double> far = distances_of(sample.values(), robust),
                            near = distances_of(sample.values(), plain);
  if (far.empty()) fail(SS_NOT_POSITIVE, options);

  MatrixReport centre = {"Mean and deviation, classical and robust (" + options.robust + ")",
                         names,
                         {},
                         {"mean", "robust mean", "std. deviation", "robust std. dev."}};
  for (size_t j = 0; j < p; ++j) {
    for (const double x : {static_cast<double>(plain.mean[j]), static_cast<double>(robust.mean[j]),
                           std::sqrt(static_cast<double>(plain.cov[j * (p + 1)])),
                           std::sqrt(static_cast<double>(robust.cov[j * (p + 1)]))}) {
      centre.values.push_back(x);
    }
  }
  DistancePlot plot = {far, std::sqrt(__zokdChi2ICDF(static_cast<double>(p), 0.975)), {}};
  for (const int64_t row : rows) plot.labels.push_back(std::to_string(row));
  const std::string beyond = beyond_text(plot);
  if (!options.distances) centre.note = beyond;
  report.matrices.push_back(std::move(centre));
  report.matrices.push_back({"Classical covariance", names, {plain.cov.begin(), plain.cov.end()}});
  report.matrices.push_back({"Robust covariance", names, {robust.cov.begin(), robust.cov.end()}});
  if (options.distances) {
    MatrixReport table = {
        "Distances by row", plot.labels, {}, {"classical", "robust", "beyond"}, beyond};
    for (size_t i = 0; i < far.size(); ++i) {
      table.values.push_back(near.empty() ? NAN : near[i]);
      table.values.push_back(far[i]);
      table.values.push_back(far[i] <= plot.cutoff ? 0 : 1);
    }
    report.matrices.push_back(std::move(table));
  }
  report.plot = std::move(plot);
}

template void report_robust<float>(const Sample<float>&, const std::vector<std::string>&,
                                   const std::vector<int64_t>&, const StatsOptions&,
                                   const SSThreadServices*, Report&);
template void report_robust<double>(const Sample<double>&, const std::vector<std::string>&,
                                    const std::vector<int64_t>&, const StatsOptions&,
                                    const SSThreadServices*, Report&);

}  // namespace orv_cli
