// SPDX-License-Identifier: MIT
// The figures that orv stats tells of a column, or of a group's part of one.
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace orv_cli {

/// What is not defined, such as the deviation of one value, is NaN.
struct Summary {
  static constexpr double undefined = std::numeric_limits<double>::quiet_NaN();

  int64_t count = 0, missing = 0;
  double mean = undefined, standard_deviation = undefined, minimum = undefined, maximum = undefined,
         skewness = undefined, kurtosis = undefined, sum = undefined, variance = undefined,
         standard_error = undefined, mean_low = undefined, mean_high = undefined, mode = undefined,
         mode_count = undefined;
  std::vector<double> quantiles;
};

/// What a figure is measured in: nothing, the column's unit, its square; or it is a ratio.
enum class Unit { count, column, square, ratio };

/// A figure in a list of them: a row of the table of results.
struct Figure {
  std::string name, label;  // as in CSV and as in a table
  Unit unit;
  double (*of)(const Summary&);  // null: the quantile of this place among the orders
  size_t order = 0;

  double value(const Summary& s) const { return of != nullptr ? of(s) : s.quantiles[order]; }
};

class Figures {
 public:
  /// Lists as they were given; empty ones stand for what is told by default, of groups a little
  /// less. Mistakes become an Error.
  Figures(const std::string& names, const std::string& orders, bool of_groups);

  const std::vector<Figure>& list() const { return list_; }
  const std::vector<double>& orders() const { return orders_; }  // of the quantiles among them
  bool has(std::string_view name) const;
  bool need_values() const { return !orders_.empty() || has("mode") || has("mode_count"); }

  /// Leaves out what needs values; false if that was asked for.
  bool leave_values_out();

 private:
  void add(const std::string& name);
  void add_quantile(double order);

  bool asked_ = false;
  std::vector<double> asked_orders_;
  std::vector<Figure> list_;
  std::vector<double> orders_;
};

/// The mean's standard error and its interval of this confidence by Student's t, for weights with
/// the sum W and the sum of squares W2: as of W^2/W2 observations.
void set_interval(Summary& summary, double W, double W2, double confidence);

}  // namespace orv_cli
