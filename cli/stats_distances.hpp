// SPDX-License-Identifier: MIT
// Rows as points: what their columns are measured in, and how far they are from a mean.
#pragma once

#include <orv/ss.h>

#include <span>
#include <string>
#include <vector>

#include "distance_plot.hpp"
#include "stats_sample.hpp"

namespace orv_cli {

template <class T>
struct Estimate {
  std::vector<T> mean, cov;
};

/// A task over rows of p values, one row after another.
class RowsTask {
 public:
  template <class T>
  RowsTask(std::span<const T> values, size_t p)
      : p_(static_cast<int64_t>(p)), n_(static_cast<int64_t>(values.size() / p)) {
    task.int_is_64 = 1;
    task.dimension = &p_;
    task.observation_count = &n_;
    task.observation_storage = &layout_;
    task.observations = values.data();
  }
  RowsTask(const RowsTask&) = delete;
  RowsTask& operator=(const RowsTask&) = delete;

  SSTask task = {};

 private:
  int64_t p_, n_, layout_ = SS_COLUMNS;
};

/// What a column is measured in.
struct ColumnUnit {
  double origin, scale;
};

/// The median and the spread of the middle half, or where that is 0 the deviation. Throws an Error,
/// which names the option, where a column is not finite or does not vary.
template <class T>
std::vector<ColumnUnit> units_of(const Sample<T>& sample, const std::vector<std::string>& names,
                                 const std::string& option, const SSThreadServices* services);

/// The sample's values in units, and an estimate that was made of those in the data's own.
template <class T>
std::vector<T> in_units(const Sample<T>& sample, const std::vector<ColumnUnit>& units);
template <class T>
void take_units_off(Estimate<T>& estimate, const std::vector<ColumnUnit>& units);

/// Mean and covariance of all rows.
template <class T>
Estimate<T> classical(const Sample<T>& sample);

/// Mahalanobis distances of rows, one after another; none where the covariance has no inverse.
template <class T>
std::vector<double> distances_of(std::span<const T> values, const Estimate<T>& estimate);

/// "14 of 75 rows are beyond the cut-off 3.34: 1, 2, 3"
std::string beyond_text(const DistancePlot& plot);

}  // namespace orv_cli
