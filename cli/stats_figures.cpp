// SPDX-License-Identifier: MIT
#include "stats_figures.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <boost/math/distributions/students_t.hpp>
#include <cmath>
#include <iterator>
#include <utility>

#include "cells.hpp"
#include "error.hpp"
#include "suggest.hpp"

namespace orv_cli {
namespace {

struct Known {
  std::string_view name, other_name, label;
  Unit unit;
  double (*of)(const Summary&);
};
#define ORV_FIELD(field) [](const Summary& s) { return static_cast<double>(s.field); }
constexpr Known known[] = {
    {"count", "n", "count", Unit::count, ORV_FIELD(count)},
    {"missing", "", "missing", Unit::count, ORV_FIELD(missing)},
    {"sum", "", "sum", Unit::column, ORV_FIELD(sum)},
    {"mean", "", "mean", Unit::column, ORV_FIELD(mean)},
    {"standard_error", "se", "std. error of mean", Unit::column, ORV_FIELD(standard_error)},
    {"mean_low", "", "mean from", Unit::column, ORV_FIELD(mean_low)},
    {"mean_high", "", "mean to", Unit::column, ORV_FIELD(mean_high)},
    {"standard_deviation", "sd", "std. deviation", Unit::column, ORV_FIELD(standard_deviation)},
    {"variance", "var", "variance", Unit::square, ORV_FIELD(variance)},
    {"minimum", "min", "minimum", Unit::column, ORV_FIELD(minimum)},
    {"quantiles", "", "", Unit::column, nullptr},
    {"maximum", "max", "maximum", Unit::column, ORV_FIELD(maximum)},
    {"mode", "", "mode", Unit::column, ORV_FIELD(mode)},
    {"mode_count", "", "count of mode", Unit::count, ORV_FIELD(mode_count)},
    {"skewness", "skew", "skewness", Unit::ratio, ORV_FIELD(skewness)},
    {"excess_kurtosis", "kurtosis", "excess kurtosis", Unit::ratio, ORV_FIELD(kurtosis)},
};
#undef ORV_FIELD

constexpr const char* by_default =
    "count,missing,mean,standard_deviation,minimum,quantiles,maximum,skewness,excess_kurtosis";
constexpr const char* by_default_of_groups =
    "count,missing,mean,standard_deviation,minimum,quantiles,maximum";

/// Short names for several.
constexpr std::pair<std::string_view, const char*> sets[] = {{"ci", "mean_low,mean_high"}};

std::vector<double> orders_of(const std::string& text) {
  std::vector<double> orders;
  for (const std::string& part : parts_of(text)) {
    double& order = orders.emplace_back();
    if (!parse(part, order) || !(order >= 0 && order <= 1)) {
      throw Error(
          "--quantiles {}: {} is not an order; allowed are numbers from 0 to 1, such as "
          "0.1,0.5,0.9",
          in_quotes(text), in_quotes(part));
    }
  }
  return orders;
}

}  // namespace

Figures::Figures(const std::string& names, const std::string& orders, bool of_groups)
    : asked_(!names.empty() || !orders.empty()),
      asked_orders_(orders_of(orders.empty() ? "0.25,0.5,0.75" : orders)) {
  const char* const otherwise = of_groups ? by_default_of_groups : by_default;
  for (const std::string& name : parts_of(names.empty() ? otherwise : names)) add(name);
  if (!orders.empty() && orders_.empty()) add("quantiles");
}

void Figures::add_quantile(double order) {
  const auto at = std::ranges::find(orders_, order);
  list_.push_back({fmt::format("q{}", order), fmt::format("{:.6g}%", 100 * order), Unit::column,
                   nullptr, static_cast<size_t>(at - orders_.begin())});
  if (at == orders_.end()) orders_.push_back(order);
}

void Figures::add(const std::string& name) {
  const auto* set =
      std::ranges::find(sets, std::string_view(name), [](auto& s) { return s.first; });
  if (set != std::end(sets)) {
    for (const std::string& part : parts_of(set->second)) add(part);
    return;
  }
  if (name == "all") {
    for (const Known& k : known) add(std::string(k.name));
    return;
  }
  if (name == "median") return add_quantile(0.5);
  const auto* k = std::ranges::find_if(known, [&](const Known& row) {
    return row.name == name || (row.other_name == name && !name.empty());
  });
  if (k == std::end(known)) {
    std::vector<std::string> names = {"all", "ci", "median"};
    for (const Known& row : known) names.emplace_back(row.name);
    throw Error("--figures: no figure {}{}; allowed are {}", in_quotes(name),
                did_you_mean(name, names), fmt::join(names, ", "));
  }
  if (k->of != nullptr) {
    list_.push_back({std::string(k->name), std::string(k->label), k->unit, k->of});
    return;
  }
  for (const double order : asked_orders_) add_quantile(order);
}

bool Figures::has(std::string_view name) const {
  return std::ranges::find(list_, name, &Figure::name) != list_.end();
}

bool Figures::leave_values_out() {
  if (!need_values()) return true;
  if (asked_) return false;
  std::erase_if(list_, [](const Figure& f) { return f.of == nullptr; });
  orders_.clear();
  return true;
}

void set_interval(Summary& summary, double W, double W2, double confidence) {
  const double observations = W * W / W2;
  if (!(observations > 1) || std::isnan(summary.standard_deviation)) return;
  summary.standard_error = summary.standard_deviation / std::sqrt(observations);
  const boost::math::students_t law(observations - 1);
  const double reach = boost::math::quantile(law, (1 + confidence) / 2) * summary.standard_error;
  summary.mean_low = summary.mean - reach;
  summary.mean_high = summary.mean + reach;
}

}  // namespace orv_cli
