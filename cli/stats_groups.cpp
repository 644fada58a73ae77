// SPDX-License-Identifier: MIT
#include "stats_groups.hpp"

#include <fmt/format.h>
#include <orv/sort.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>

#include "cells.hpp"
#include "stats_exact.hpp"

namespace orv_cli {
namespace {

void sort_values(std::span<double> x) { __zokdQSort(static_cast<int32_t>(x.size()), x.data()); }
void sort_values(std::span<float> x) { __zoksQSort(static_cast<int32_t>(x.size()), x.data()); }

/// Linear between the neighbours of (n - 1) q.
template <class T>
double quantile_of_sorted(std::span<const T> sorted, double order) {
  const double at = static_cast<double>(sorted.size() - 1) * order;
  const auto k = static_cast<size_t>(at);
  const double low = sorted[k], high = sorted[std::min(k + 1, sorted.size() - 1)];
  return low == high ? low : low + (at - static_cast<double>(k)) * (high - low);
}

template <class T>
void set_moments(Summary& s, std::span<const T> values, std::span<const T> weights,
                 const SummaryOptions& options) {
  ExactWeights w;
  ExactMoments moments;
  const T* const weight = weights.empty() ? nullptr : weights.data();
  w.add(weight, values.size());
  moments.add(values.data(), 1, weight, values.size(), values[0]);
  s.sum = static_cast<double>(moments.sum.value());
  s.mean = moments.mean(w);
  if (s.count < 2) return;
  s.variance = s.minimum < s.maximum ? static_cast<double>(moments.variance(w)) : 0;
  s.standard_deviation = std::sqrt(s.variance);
  if (options.interval) {
    set_interval(s, static_cast<double>(w.sum.value()), static_cast<double>(w.squares.value()),
                 options.confidence);
  }
  if (!options.shape || !(s.variance > 0)) return;
  long double third = 0, fourth = 0;
  for (size_t i = 0; i < values.size(); ++i) {
    const long double d = values[i] - static_cast<long double>(s.mean);
    const long double cube = (weight != nullptr ? weight[i] : 1) * d * d * d;
    third += cube;
    fourth += cube * d;
  }
  const long double W = w.sum.value(), c2 = s.variance;
  s.skewness = static_cast<double>(third / W / (c2 * std::sqrt(c2)));
  s.kurtosis = static_cast<double>(fourth / W / (c2 * c2) - 3);
}

}  // namespace

// ---- Numbers of groups --------------------------------------------------------------------------

uint32_t GroupNumbers::number(std::span<const std::string_view> cells) {
  key_.clear();
  for (size_t k = 0; k < cells.size() && cells.size() > 1; ++k) {
    key_ += fmt::format_int(cells[k].size()).c_str();  // tells ab, c from a, bc
    key_ += ' ';
    key_ += cells[k];
  }
  const std::string_view key = cells.size() == 1 ? cells[0] : key_;
  const auto hash = static_cast<uint32_t>(std::hash<std::string_view>()(key));
  Place& place = find(key, hash);
  if (place.number != nobody) return place.number;
  const auto number = static_cast<uint32_t>(size());
  place = {hash, number};
  keys_ += key;
  key_begins_.push_back(keys_.size());
  labels_.emplace_back(cells.begin(), cells.end());
  bytes_ += static_cast<int64_t>(2 * key.size() + 128);
  if (2 * size() > places_.size()) grow();
  return number;
}

/// The group's place, or the free one that is to be its.
GroupNumbers::Place& GroupNumbers::find(std::string_view wanted, uint32_t hash) {
  for (size_t at = hash;; ++at) {
    Place& place = places_[at & (places_.size() - 1)];
    if (place.number == nobody) return place;
    if (place.hash == hash && key(place.number) == wanted) return place;
  }
}

void GroupNumbers::grow() {
  std::vector<Place> old(4 * places_.size(), Place{0, nobody});
  old.swap(places_);
  for (const Place& place : old) {
    if (place.number != nobody) find(key(place.number), place.hash) = place;
  }
}

std::vector<uint32_t> GroupNumbers::sorted() const {
  std::vector<uint32_t> places(size());
  std::iota(places.begin(), places.end(), 0U);
  if (places.empty()) return places;
  const size_t width = labels_[0].size();
  std::vector<double> numbers(size() * width);
  std::vector<char> numeric(width, 1);  // columns in which all labels are numbers
  for (size_t g = 0; g < size(); ++g) {
    for (size_t k = 0; k < width; ++k) {
      numeric[k] &= parse(labels_[g][k], numbers[g * width + k]);
    }
  }
  std::ranges::sort(places, [&](uint32_t a, uint32_t b) {
    for (size_t k = 0; k < width; ++k) {
      const double x = numbers[a * width + k], y = numbers[b * width + k];
      if (numeric[k] != 0 && x != y) return x < y;
      const int order = labels_[a][k].compare(labels_[b][k]);
      if (order != 0) return order < 0;
    }
    return false;
  });
  return places;
}

// ---- Figures of a group -------------------------------------------------------------------------

template <class T>
void set_mode(Summary& summary, std::span<const T> values) {
  const auto is_whole = [](T x) { return std::isfinite(x) && std::trunc(x) == x; };
  if (values.empty() || !std::ranges::all_of(values, is_whole)) return;
  std::vector<T> sorted(values.begin(), values.end());
  if (!std::ranges::is_sorted(sorted)) sort_values(std::span(sorted));
  size_t most = 0;
  for (auto begin = sorted.begin(), end = begin; begin != sorted.end(); begin = end) {
    end = std::upper_bound(begin, sorted.end(), *begin);
    if (const auto count = static_cast<size_t>(end - begin); count > most) {
      most = count;
      summary.mode = *begin;
    }
  }
  summary.mode_count = static_cast<double>(most);
}

template <class T>
Summary summarize(std::span<T> values, std::span<const T> weights, const SummaryOptions& options,
                  const SSThreadServices* services) {
  Summary s;
  s.count = static_cast<int64_t>(values.size());
  s.quantiles.assign(options.orders.size(), Summary::undefined);
  if (values.empty()) return s;
  const auto [least, greatest] = std::ranges::minmax(values);
  s.minimum = least;
  s.maximum = greatest;
  set_moments(s, std::span<const T>(values), weights, options);
  if (!weights.empty() && !options.orders.empty()) {
    s.quantiles = quantiles_of<T>(1, values, weights, options.orders, services);
  }
  if (options.mode || (weights.empty() && !options.orders.empty())) sort_values(values);
  const std::span<const T> sorted = values;
  if (options.mode) set_mode(s, sorted);
  for (size_t i = 0; i < options.orders.size() && weights.empty(); ++i) {
    s.quantiles[i] = quantile_of_sorted(sorted, options.orders[i]);
  }
  return s;
}

template void set_mode(Summary&, std::span<const double>);
template void set_mode(Summary&, std::span<const float>);
template Summary summarize(std::span<double>, std::span<const double>, const SummaryOptions&,
                           const SSThreadServices*);
template Summary summarize(std::span<float>, std::span<const float>, const SummaryOptions&,
                           const SSThreadServices*);

}  // namespace orv_cli
