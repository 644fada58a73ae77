// SPDX-License-Identifier: MIT
// Which columns of a file a run of `orv stats` takes, and what for.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "columns.hpp"
#include "stats_analysis.hpp"

namespace orv_cli {

using Strings = std::vector<std::string>;

inline constexpr size_t most_by = 16;  // columns that tell the groups

class Choice {
 public:
  Choice(const Table& table, const StatsOptions& options);

  std::string name(size_t column) const;

  std::vector<size_t> columns;  // to analyse
  std::vector<int64_t> roles;   // of each: 1 partial, -1 given
  std::optional<size_t> weights;
  std::vector<size_t> by;     // whose cells tell the groups
  Strings notes;              // of what is left out
  std::vector<size_t> empty;  // left out, since nothing was in them so far

 private:
  std::optional<size_t> find(const std::string& column, std::string_view option) const;
  std::vector<size_t> find_all(const std::string& list, std::string_view option) const;
  void add(size_t column, std::string_view option);
  const CsvRow* first_row_with(size_t column) const;
  void expect_numbers(size_t column) const;
  void choose_numeric();
  void set_roles(const std::vector<size_t>& list, std::string_view option, int64_t role);

  const Table& table_;
  std::vector<size_t> excluded_;
};

}  // namespace orv_cli
