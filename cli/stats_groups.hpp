// SPDX-License-Identifier: MIT
// Groups of rows that hold the same in some columns, and their figures.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "stats_figures.hpp"
#include "stats_sample.hpp"

namespace orv_cli {

/// Numbers the groups from 0, in the order in which they come.
class GroupNumbers {
 public:
  /// Cells of one row. Only their texts count, so that 1 and 1.0 are different groups.
  uint32_t number(std::span<const std::string_view> cells);

  size_t size() const { return labels_.size(); }
  const std::vector<std::vector<std::string>>& labels() const { return labels_; }  // cells of each
  int64_t bytes() const { return bytes_; }

  /// The places of the groups in the order of their labels, numbers by their value.
  std::vector<uint32_t> sorted() const;

 private:
  /// Of a hash table with open addressing: a map of nodes costs twice the time of all the rest.
  struct Place {
    uint32_t hash, number;
  };
  static constexpr uint32_t nobody = UINT32_MAX;

  std::string_view key(uint32_t number) const {
    return std::string_view(keys_).substr(key_begins_[number],
                                          key_begins_[number + 1] - key_begins_[number]);
  }
  Place& find(std::string_view key, uint32_t hash);
  void grow();

  std::vector<Place> places_ = std::vector<Place>(1024, Place{0, nobody});
  std::string keys_;  // one behind the other
  std::vector<size_t> key_begins_ = {0};
  std::vector<std::vector<std::string>> labels_;
  std::string key_;
  int64_t bytes_ = 0;
};

struct SummaryOptions {
  bool mode = false, interval = false, shape = false;  // shape: skewness and kurtosis
  double confidence = 0.95;
  std::vector<double> orders;
};

/// The most frequent value and how often it comes, the least of several; nothing unless all are
/// whole numbers.
template <class T>
void set_mode(Summary& summary, std::span<const T> values);

/// Calls use(group, summary) for each group in turn. The values of a column and the group of each,
/// which is below `count`; weights may be empty. `rows` are those of each group, with missing ones.
template <class T, class Use>
void summarize_groups(std::span<const T> values, std::span<const T> weights,
                      std::span<const uint32_t> groups, std::span<const int64_t> rows,
                      const SummaryOptions& options, const SSThreadServices* services, Use use);

/// The figures of a few values, whose order this changes.
template <class T>
Summary summarize(std::span<T> values, std::span<const T> weights, const SummaryOptions& options,
                  const SSThreadServices* services);

template <class T, class Use>
void summarize_groups(std::span<const T> values, std::span<const T> weights,
                      std::span<const uint32_t> groups, std::span<const int64_t> rows,
                      const SummaryOptions& options, const SSThreadServices* services, Use use) {
  std::vector<size_t> ends(rows.size() + 1);  // while they are filled, where the next value goes
  for (const uint32_t group : groups) ++ends[group + 1];
  for (size_t g = 0; g < rows.size(); ++g) ends[g + 1] += ends[g];
  std::vector<T> sorted(values.size()), sorted_weights(weights.size());
  for (size_t i = 0; i < values.size(); ++i) {
    const size_t at = ends[groups[i]]++;
    sorted[at] = values[i];
    if (!weights.empty()) sorted_weights[at] = weights[i];
  }
  for (size_t g = 0, begin = 0; g < rows.size(); begin = ends[g++]) {
    const size_t count = ends[g] - begin;
    const std::span<const T> of_weights =
        weights.empty() ? std::span<const T>()
                        : std::span<const T>(sorted_weights).subspan(begin, count);
    Summary summary =
        summarize(std::span<T>(sorted).subspan(begin, count), of_weights, options, services);
    summary.missing = rows[g] - summary.count;
    use(g, summary);
  }
}

}  // namespace orv_cli
