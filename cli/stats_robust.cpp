#include "stats_robust.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <orv/serv.h>
#include <orv/task.hpp>

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>

#include "error.hpp"

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

template <class T>
struct Estimate {
  std::vector<T> mean, cov;
};

/// What a column is measured in: its stopping rule is in the unit of the data.
struct Unit {
  double origin, scale;
};

std::string at_option(const StatsOptions& options) { return "--robust " + options.robust; }

/// The spread of a column's middle half, or where that is 0 its deviation.
template <class T>
std::vector<Unit> units_of(const Sample<T>& sample, const std::vector<std::string>& names,
                           const StatsOptions& options, const SSThreadServices* services) {
  constexpr double deviation_of_normal = 1 / 1.3489795003921635;  // of its interquartile range
  const double orders[] = {0.25, 0.5, 0.75};
  const std::vector<double> quartiles =
      quantiles_of(static_cast<int64_t>(sample.variables()), sample.values(), {}, orders, services);
  std::vector<Unit> units;
  for (size_t j = 0; j < sample.variables(); ++j) {
    if (!std::isfinite(sample.minimum(j)) || !std::isfinite(sample.maximum(j))) {
      throw Error("{}: a value of {} is infinite; finite numbers are needed", at_option(options),
                  in_quotes(names[j]));
    }
    const double* const q = &quartiles[3 * j];
    Unit unit = {q[1], deviation_of_normal * (q[2] - q[0])};
    if (!(unit.scale > 0)) unit.scale = sample.standard_deviation(j);
    if (unit.scale == 0) {
      throw Error("{}: all values of {} are the same; leave it out with --select",
                  at_option(options), in_quotes(names[j]));
    }
    units.push_back(unit);
  }
  return units;
}

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
Estimate<T> estimate(const Sample<T>& sample, const std::vector<Unit>& units,
                     const StatsOptions& options, const SSThreadServices* services) {
  const size_t p = sample.variables();
  std::vector<T> scaled(sample.values().begin(), sample.values().end());
  for (size_t k = 0; k < scaled.size(); ++k) {
    const Unit& unit = units[k % p];
    scaled[k] = static_cast<T>((static_cast<double>(scaled[k]) - unit.origin) / unit.scale);
  }
  Estimate<T> e = {std::vector<T>(p), std::vector<T>(p * p)};
  const T iterations = options.robust == "ogk" ? 0 : most_iterations;
  const T parameters[] = {T(0.5), T(0.001), close<T>, iterations};
  const auto p_word = static_cast<int64_t>(p), n = sample.count();
  const int64_t layout = SS_COLUMNS, storage = SS_MATRIX_FULL, count = std::size(parameters);
  SSTask task = {};
  task.int_is_64 = 1;
  task.dimension = &p_word;
  task.observation_count = &n;
  task.observation_storage = &layout;
  task.observations = scaled.data();
  task.robust_param_count = &count;
  task.robust_params = parameters;
  task.robust_mean = e.mean.data();
  task.robust_cov = e.cov.data();
  task.robust_cov_storage = &storage;
  const int32_t status = Entries<T>::robust_covariance(&task, 0, SS_METHOD_TBS, services);
  if (status != SS_OK) fail(status, options);
  for (size_t j = 0; j < p; ++j) {
    e.mean[j] = static_cast<T>(units[j].origin + units[j].scale * static_cast<double>(e.mean[j]));
    for (size_t k = 0; k < p; ++k) {
      const double scale = units[j].scale * units[k].scale;
      e.cov[j * p + k] = static_cast<T>(static_cast<double>(e.cov[j * p + k]) * scale);
    }
  }
  return e;
}

/// In memory that the library may release.
template <class T>
using Matrix = std::unique_ptr<T[], void (*)(void*)>;

/// The inverse of a covariance, or null where it has none.
template <class T>
Matrix<T> inverse_of(const std::vector<T>& cov, int32_t p) {
  Matrix<T> inverse(static_cast<T*>(orv_serv_allocate(cov.size() * sizeof(T), 128)),
                    orv_serv_deallocate);
  if (!inverse) throw std::bad_alloc();
  std::ranges::copy(cov, inverse.get());
  const int32_t rank = Entries<T>::test_rank(p, inverse.get());
  if (rank == SS_NO_MEMORY) throw std::bad_alloc();
  if (rank != SS_OK || !std::equal(cov.begin(), cov.end(), inverse.get())) inverse.reset();
  if (!inverse) return inverse;
  const int32_t status = Entries<T>::invert(p, inverse.get());
  if (status == SS_NOT_POSITIVE_DEFINITE) inverse.release();
  if (status != SS_OK) inverse.reset();
  return inverse;
}

/// Of each row; none where the covariance has no inverse.
template <class T>
std::vector<double> distances(const Sample<T>& sample, const Estimate<T>& e) {
  const auto p = static_cast<int64_t>(sample.variables());
  const int64_t first = 0, end = sample.count(), layout = SS_COLUMNS, block = 2 * 64 * p;
  const Matrix<T> inverse = inverse_of(e.cov, static_cast<int32_t>(p));
  if (!inverse) return {};
  std::vector<T> result(static_cast<size_t>(end)), buffer(static_cast<size_t>(block));
  SSTask task = {};
  task.int_is_64 = 1;
  task.dimension = &p;
  task.observation_count = &end;
  task.observation_storage = &layout;
  task.observations = sample.values().data();
  const void* const words[] = {&first,        &end,    e.mean.data(), inverse.get(),
                               result.data(), nullptr, buffer.data(), &block};
  static_assert(sizeof words == sizeof task.mahalanobis_block);
  std::copy(std::begin(words), std::end(words), const_cast<const void**>(task.mahalanobis_block));
  if (Entries<T>::mahalanobis(&task) != SS_OK) throw std::bad_alloc();
  return {result.begin(), result.end()};
}

template <class T>
Estimate<T> classical(const Sample<T>& sample) {
  Estimate<T> e;
  for (size_t j = 0; j < sample.variables(); ++j) {
    e.mean.push_back(static_cast<T>(sample.mean(j)));
    for (size_t k = 0; k < sample.variables(); ++k) {
      e.cov.push_back(static_cast<T>(sample.covariance(j, k)));
    }
  }
  return e;
}

/// "14 of 75 rows are beyond the cut-off 3.34: 1, 2, 3"
std::string beyond_text(const DistancePlot& plot) {
  constexpr size_t most_listed = 20;
  std::vector<std::string> beyond;
  for (size_t i = 0; i < plot.distances.size(); ++i) {
    if (!(plot.distances[i] <= plot.cutoff)) beyond.push_back(plot.labels[i]);
  }
  std::string text = fmt::format("{} of {} rows are beyond the cut-off {:.4g}", beyond.size(),
                                 plot.distances.size(), plot.cutoff);
  if (beyond.empty()) return text;
  const bool cut = beyond.size() > most_listed;
  if (cut) beyond.resize(most_listed);
  return text + fmt::format(": {}{}", fmt::join(beyond, ", "), cut ? ", ..." : "");
}

}  // namespace

void check_robust(const StatsOptions& options) {
  if (options.missing == "pairwise") {
    throw Error("--missing pairwise: {} needs complete rows; allowed are available, drop and fail",
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
      estimate(sample, units_of(sample, names, options, services), options, services);
  const Estimate<T> plain = classical(sample);
  const std::vector<double> far = distances(sample, robust), near = distances(sample, plain);
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
