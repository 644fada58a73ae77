// SPDX-License-Identifier: MIT
#include "stats_distances.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <orv/scalar.h>
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

/// In memory that the library may release.
template <class T>
using Block = std::unique_ptr<T[], void (*)(void*)>;

/// The inverse of a covariance, or null where it has none.
template <class T>
Block<T> inverse_of(const std::vector<T>& cov, int32_t p) {
  Block<T> inverse(static_cast<T*>(orv_serv_allocate(cov.size() * sizeof(T), 128)),
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

}  // namespace

template <class T>
std::vector<ColumnUnit> units_of(const Sample<T>& sample, const std::vector<std::string>& names,
                                 const std::string& option, const SSThreadServices* services) {
  constexpr double deviation_of_normal = 1 / 1.3489795003921635;  // of its interquartile range
  const double orders[] = {0.25, 0.5, 0.75};
  const std::vector<double> quartiles =
      quantiles_of(static_cast<int64_t>(sample.variables()), sample.values(), {}, orders, services);
  std::vector<ColumnUnit> units;
  for (size_t j = 0; j < sample.variables(); ++j) {
    if (!std::isfinite(sample.minimum(j)) || !std::isfinite(sample.maximum(j))) {
      throw Error("{}: a value of {} is infinite; finite numbers are needed", option,
                  in_quotes(names[j]));
    }
    const double* const q = &quartiles[3 * j];
    ColumnUnit unit = {q[1], deviation_of_normal * (q[2] - q[0])};
    if (!(unit.scale > 0)) unit.scale = sample.standard_deviation(j);
    if (unit.scale == 0) {
      throw Error("{}: all values of {} are the same; leave it out with --select", option,
                  in_quotes(names[j]));
    }
    units.push_back(unit);
  }
  return units;
}

template <class T>
std::vector<T> in_units(const Sample<T>& sample, const std::vector<ColumnUnit>& units) {
  std::vector<T> scaled(sample.values().begin(), sample.values().end());
  for (size_t k = 0; k < scaled.size(); ++k) {
    const ColumnUnit& unit = units[k % units.size()];
    scaled[k] = static_cast<T>((static_cast<double>(scaled[k]) - unit.origin) / unit.scale);
  }
  return scaled;
}

template <class T>
void take_units_off(Estimate<T>& e, const std::vector<ColumnUnit>& units) {
  const size_t p = units.size();
  for (size_t j = 0; j < p; ++j) {
    e.mean[j] = static_cast<T>(units[j].origin + units[j].scale * static_cast<double>(e.mean[j]));
    for (size_t k = 0; k < p; ++k) {
      const double scale = units[j].scale * units[k].scale;
      e.cov[j * p + k] = static_cast<T>(static_cast<double>(e.cov[j * p + k]) * scale);
    }
  }
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

template <class T>
std::vector<double> distances_of(std::span<const T> values, const Estimate<T>& e) {
  const size_t p = e.mean.size(), n = values.size() / p;
  const auto end = static_cast<int64_t>(n), block = static_cast<int64_t>(2 * 64 * p);
  const int64_t first = 0;
  const Block<T> inverse = inverse_of(e.cov, static_cast<int32_t>(p));
  if (!inverse) return {};
  std::vector<T> result(n), buffer(static_cast<size_t>(block));
  RowsTask rows(values, p);
  SSTask& task = rows.task;
  const void* const words[] = {&first,        &end,    e.mean.data(), inverse.get(),
                               result.data(), nullptr, buffer.data(), &block};
  static_assert(sizeof words == sizeof task.mahalanobis_block);
  std::copy(std::begin(words), std::end(words), const_cast<const void**>(task.mahalanobis_block));
  if (Entries<T>::mahalanobis(&task) != SS_OK) throw std::bad_alloc();
  return {result.begin(), result.end()};
}

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

#define ORV_INSTANCES(T)                                                                          \
  template std::vector<ColumnUnit> units_of<T>(const Sample<T>&, const std::vector<std::string>&, \
                                               const std::string&, const SSThreadServices*);      \
  template std::vector<T> in_units<T>(const Sample<T>&, const std::vector<ColumnUnit>&);          \
  template void take_units_off<T>(Estimate<T>&, const std::vector<ColumnUnit>&);                  \
  template Estimate<T> classical<T>(const Sample<T>&);                                            \
  template std::vector<double> distances_of<T>(std::span<const T>, const Estimate<T>&);
ORV_INSTANCES(float)
ORV_INSTANCES(double)
#undef ORV_INSTANCES

}  // namespace orv_cli
