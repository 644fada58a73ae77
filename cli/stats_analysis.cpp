// SPDX-License-Identifier: MIT
#include "stats_analysis.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <orv/threads.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <exception>
#include <functional>
#include <limits>
#include <new>
#include <optional>

#include "error.hpp"
#include "progress.hpp"
#include "stats_choice.hpp"
#include "stats_correlation.hpp"
#include "stats_groups.hpp"
#include "stats_missing.hpp"
#include "stats_outliers.hpp"
#include "stats_robust.hpp"

namespace orv_cli {
namespace {

constexpr int64_t block_values = 1 << 17;  // that are read before they are computed with
constexpr size_t most_pairwise = 200;      // columns that all pairs are made of
constexpr double epsilon_by_default = 1e-4;

/// Of a covariance.
Matrix correlation_of(const Matrix& covariance) {
  const auto p =
      static_cast<size_t>(std::lround(std::sqrt(static_cast<double>(covariance.size()))));
  Matrix result(covariance);
  for (size_t i = 0; i < p; ++i) {
    for (size_t j = 0; j < p; ++j) {
      const double scale = std::sqrt(covariance[i * (p + 1)]) * std::sqrt(covariance[j * (p + 1)]);
      result[i * p + j] = i == j ? 1 : covariance[i * p + j] / scale;
    }
  }
  return result;
}

// ---- The run ------------------------------------------------------------------------------------

template <class T>
class Analysis {
 public:
  explicit Analysis(const StatsOptions& options)
      : options_(options),
        services_(orv_threads_reproducible()),
        figures_(options.figures, options.quantiles, false),
        group_figures_(options.figures, options.quantiles, true),
        table_(input_of(options.input), column_limit()),
        choice_(table_, options),
        pairwise_(options.missing == "pairwise"),
        matrix_(options.missing != "em" &&
                (options.covariance || options.correlation || options.repair_correlation ||
                 !options.partial.empty() || options.points())),
        values_(choice_.columns.size()),
        missing_(choice_.columns.size()),
        groups_(choice_.by.empty() ? 0 : choice_.columns.size()) {
    make_samples();
  }

  Report run() {
    Progress progress(table_.bytes_in_all(), Progress::Results::at_the_end);
    while (const CsvRow* row = table_.next()) {
      take(*row);
      if (++waiting_ < block_rows_) continue;
      take_block();
      progress.update(table_.bytes_read());
    }
    take_block();
    return report();
  }

 private:
  using Values = Sample<T>;

  int64_t memory() const;
  CsvLimit column_limit() const;
  void expect_room() const;
  void make_samples();
  void take(const CsvRow& row);
  void take_pairs();
  T cell(const CsvRow& row, size_t column);
  bool take_weight(const CsvRow& row);
  bool take_group(const CsvRow& row);
  void check_empty_columns(const CsvRow& row) const;
  void take_block();
  void make_room();
  void leave_values_out();
  void drop_values();
  const char* option_that_keeps_values() const;
  void summarise_values();
  template <class Function>
  void for_each(size_t items, Function function, bool together = true);
  /// Whether columns may be copied on all threads at once, few of many.
  bool may_copy_together() const {
    constexpr size_t part = 8;
    return columns_.size() >= part * static_cast<size_t>(orv_threads_pool()->max_threads());
  }
  Values& pair(size_t i, size_t j) {
    return pairs_[i * (2 * values_.size() - i - 1) / 2 + j - i - 1];
  }

  Report report();
  Summary summary(size_t column);
  void report_columns(Report& report);
  void report_groups(Report& report);
  void report_matrices(Report& report);
  void expect_results() const;
  Strings names(int64_t role) const;
  Matrix matrix(bool correlation);

  const StatsOptions& options_;
  const SSThreadServices* const services_;
  Figures figures_;
  const Figures group_figures_;
  Table table_;
  const Choice choice_;
  const bool pairwise_;
  const bool matrix_;

  std::vector<Values> columns_;  // each by itself
  std::vector<Values> whole_;    // one of complete rows, where a matrix is wanted, or none
  std::vector<Values> pairs_;    // of columns
  std::optional<MissingTable> em_table_;
  std::vector<T> values_;  // of the row in hand, NaN where missing
  T weight_ = 1;
  std::vector<int64_t> missing_;  // cells of each column
  GroupNumbers group_numbers_;
  uint32_t group_ = 0;                         // of the row in hand
  std::vector<int64_t> group_rows_;            // of each group
  std::vector<std::vector<uint32_t>> groups_;  // of the values of each column
  std::vector<uint32_t> whole_groups_;         // of the complete rows
  std::vector<int64_t> whole_rows_;            // their numbers, from 1
  int64_t rows_ = 0, dropped_ = 0, weightless_ = 0, complete_ = 0;
  double weight_sum_ = 0;
  int64_t waiting_ = 0, block_rows_ = 0;
  bool keeps_values_ = true, left_out_ = false, summarised_ = false, made_room_ = false;
  int64_t texts_ = 0;  // cells with text, taken as missing
  std::string first_text_;
};

/// What a column, and an element of the matrices, takes on its way from the cell to the report. A
/// report in JSON is in memory as a tree.
constexpr int64_t column_bytes(bool json) { return json ? 6400 : 5888; }
constexpr int64_t element_bytes(bool json) { return json ? 192 : 96; }

/// Bytes that what grows with the number of columns may take. Less than 64 MiB would not be worth
/// saving.
template <class T>
int64_t Analysis<T>::memory() const {
  return std::max<int64_t>(options_.memory, 64) << 20;
}

template <class T>
CsvLimit Analysis<T>::column_limit() const {
  return {static_cast<size_t>(memory() / column_bytes(options_.format == "json")), false,
          "; --memory MIB allows more"};
}

/// For the matrix of each thread, and one that is printed.
template <class T>
void Analysis<T>::expect_room() const {
  const auto p = static_cast<double>(values_.size());
  const auto matrices = static_cast<double>(1 + services_->max_threads());
  const int64_t printed = element_bytes(options_.format == "json");
  const double bytes = p * p * (matrices * sizeof(T) + static_cast<double>(printed));
  if (bytes <= static_cast<double>(memory())) return;
  throw Error("matrices of {} columns take {:.0f} MiB; --select fewer, or --memory MIB allows more",
              values_.size(), std::ceil(bytes / (1 << 20)));
}

/// Every column is a sample of its own values. Matrices are of complete rows, or pairwise of each
/// pair's.
template <class T>
void Analysis<T>::make_samples() {
  const size_t p = values_.size();
  const bool weighted = choice_.weights.has_value();
  if (pairwise_ && !choice_.by.empty()) {
    throw Error(
        "--by {}: groups have no pairwise matrices; allowed are --missing available, drop "
        "and fail",
        in_quotes(options_.by));
  }
  if (pairwise_ && matrix_ && p > most_pairwise) {
    throw Error("--missing pairwise: matrices of {} columns; allowed are {}, choose with --select",
                p, most_pairwise);
  }
  if (!options_.robust.empty()) check_robust(options_);
  if (options_.outliers || options_.mahalanobis) check_outliers(options_);
  if (matrix_ && !pairwise_) expect_room();
  columns_.assign(p, Values(1, weighted, true));
  if (matrix_ && pairwise_) {
    pairs_.assign(p * (p - 1) / 2, Values(2, weighted, false, Values::Wanted::covariance));
  } else if (matrix_) {
    whole_.emplace_back(p, weighted, !choice_.by.empty() || options_.points());
  }
  if (options_.missing == "em") {
    check_em(options_);
    em_table_.emplace(names(0));
  }
  if (options_.epsilon > 0) {
    if (const char* option = option_that_keeps_values()) {
      throw Error("--eps: does not go with {}, which needs all values", option);
    }
    summarise_values();
  } else if (!figures_.need_values() && !options_.histogram && choice_.by.empty() &&
             !options_.points()) {
    drop_values();
  }
  const auto width_in_all = static_cast<int64_t>(p * (1 + whole_.size()) + 2 * pairs_.size());
  const int64_t room = memory() / 8 / (width_in_all * static_cast<int64_t>(sizeof(T)));  // rows
  block_rows_ =
      std::clamp<int64_t>(block_values / width_in_all, std::clamp<int64_t>(room, 1, 256), 1 << 16);
}

// ---- Rows ---------------------------------------------------------------------------------------

/// NaN if it is missing, or a text below numbers.
template <class T>
T Analysis<T>::cell(const CsvRow& row, size_t column) {
  const std::string_view text = row.cells[column];
  T value;
  const CellFormat::Kind kind = table_.format().read(text, value);
  if (kind == CellFormat::Kind::number && !std::isnan(value)) {
    return std::isinf(value) ? table_.number<T>(text, row.line, column) : value;
  }
  const bool is_text = kind == CellFormat::Kind::text;
  if (options_.missing == "fail") {
    if (is_text) throw Error("{}", table_.no_number(text, row.line, column));
    throw Error("{}: the cell is {}; a number is needed, or another --missing",
                table_.place(row.line, column), text.empty() ? "empty" : one_line(text));
  }
  if (is_text && texts_++ == 0) {
    first_text_ = fmt::format("{}: {}", table_.place(row.line, column), in_quotes(text));
  }
  return std::numeric_limits<T>::quiet_NaN();
}

/// False if the row has no part in anything.
template <class T>
bool Analysis<T>::take_weight(const CsvRow& row) {
  if (!choice_.weights) return true;
  weight_ = cell(row, *choice_.weights);
  if (std::isnan(weight_)) {
    ++dropped_;
    return false;
  }
  if (!(weight_ >= 0 && std::isfinite(weight_))) {
    throw Error("{}: weight {}; allowed are finite numbers from 0",
                table_.place(row.line, *choice_.weights), row.cells[*choice_.weights]);
  }
  weightless_ += weight_ == 0;
  return weight_ > 0;
}

/// False if the row's group is missing.
template <class T>
bool Analysis<T>::take_group(const CsvRow& row) {
  std::array<std::string_view, most_by> cells;
  for (size_t k = 0; k < choice_.by.size(); ++k) {
    cells[k] = row.cells[choice_.by[k]];
    if (!table_.is_missing(cells[k])) continue;
    if (options_.missing == "fail") {
      throw Error("{}: the cell is {}; a group is needed, or another --missing",
                  table_.place(row.line, choice_.by[k]),
                  cells[k].empty() ? "empty" : one_line(cells[k]));
    }
    return false;
  }
  group_ = group_numbers_.number({cells.data(), choice_.by.size()});
  if (group_ == group_rows_.size()) group_rows_.push_back(0);
  return true;
}

template <class T>
void Analysis<T>::check_empty_columns(const CsvRow& row) const {
  for (const size_t column : choice_.empty) {
    if (!table_.is_missing(row.cells[column])) {
      throw Error(
          "{}: the first cell of this column that is not empty; name it with --select, or "
          "the others to leave it out",
          table_.place(row.line, column));
    }
  }
}

template <class T>
void Analysis<T>::take_pairs() {
  const size_t p = values_.size();
  for (size_t i = 0; i < p; ++i) {
    for (size_t j = i + 1; j < p; ++j) {
      const T both[] = {values_[i], values_[j]};
      if (!std::isnan(both[0]) && !std::isnan(both[1])) pair(i, j).add(both, weight_);
    }
  }
}

template <class T>
void Analysis<T>::take(const CsvRow& row) {
  ++rows_;
  check_empty_columns(row);
  bool complete = true;
  for (size_t j = 0; j < values_.size(); ++j) {
    values_[j] = cell(row, choice_.columns[j]);
    missing_[j] += std::isnan(values_[j]);
    complete &= !std::isnan(values_[j]);
  }
  if (!take_weight(row)) return;
  const bool by_group = !choice_.by.empty();
  if ((!complete && options_.missing == "drop") || (by_group && !take_group(row))) {
    ++dropped_;
    return;
  }
  weight_sum_ += weight_;
  complete_ += complete;
  if (by_group) ++group_rows_[group_];
  for (size_t j = 0; j < values_.size(); ++j) {
    if (std::isnan(values_[j])) continue;
    columns_[j].add(values_[j], weight_);
    if (by_group) groups_[j].push_back(group_);
  }
  if (complete && !whole_.empty()) {
    whole_[0].add(values_, weight_);
    if (by_group) whole_groups_.push_back(group_);
    if (options_.points()) whole_rows_.push_back(rows_);
  }
  if (!pairs_.empty()) take_pairs();
  if (em_table_) em_table_->add(values_.data());
}

// ---- Blocks -------------------------------------------------------------------------------------

void call_function(int32_t item, int32_t, int32_t, void* args) {
  (*static_cast<std::function<void(int32_t)>*>(args))(item);
}

/// Many go to the threads one each; of few each has all threads. Neither changes a digit. An
/// exception waits until all are back.
template <class T>
template <class Function>
void Analysis<T>::for_each(size_t items, Function function, bool together) {
  const auto count = static_cast<int32_t>(items);
  std::vector<std::exception_ptr> failures(items);
  std::function<void(int32_t)> one = [&](int32_t item) {
    try {
      function(static_cast<size_t>(item));
    } catch (...) {
      failures[static_cast<size_t>(item)] = std::current_exception();
    }
  };
  if (together && count >= orv_threads_pool()->max_threads()) {
    services_->run_items(count, 0, &one, call_function);
  } else {
    for (int32_t item = 0; item < count; ++item) one(item);
  }
  for (const std::exception_ptr& failure : failures) {
    if (failure) std::rethrow_exception(failure);
  }
}

template <class T>
void Analysis<T>::drop_values() {
  for (auto* samples : {&columns_, &whole_}) {
    for (Values& sample : *samples) sample.drop_values();
  }
  keeps_values_ = false;
}

/// What needs more than a summary of the values; or null.
template <class T>
const char* Analysis<T>::option_that_keeps_values() const {
  for (const auto& [given, option] :
       {std::pair(choice_.weights.has_value(), "--weights"), std::pair(!choice_.by.empty(), "--by"),
        std::pair(!options_.robust.empty(), "--robust"), std::pair(options_.outliers, "--outliers"),
        std::pair(options_.mahalanobis, "--mahalanobis"),
        std::pair(options_.histogram, "--histogram"),
        std::pair(figures_.has("mode") || figures_.has("mode_count"), "--figures mode")}) {
    if (given) return option;
  }
  return nullptr;
}

/// From here on quantiles are told from a summary of each column.
template <class T>
void Analysis<T>::summarise_values() {
  const double epsilon = options_.epsilon > 0 ? options_.epsilon : epsilon_by_default;
  for_each(columns_.size(),
           [&](size_t j) { columns_[j].summarise_values(epsilon, orv_threads_serial()); });
  drop_values();
  summarised_ = true;
}

/// Values are kept for quantiles, modes, histograms and groups only.
template <class T>
void Analysis<T>::leave_values_out() {
  if (option_that_keeps_values() == nullptr) return summarise_values();
  const bool by_default = figures_.leave_values_out();
  for (const auto& [given, option] :
       {std::pair(!by_default, options_.quantiles.empty() ? "--figures" : "--quantiles"),
        std::pair(!choice_.by.empty(), "--by"), std::pair(!options_.robust.empty(), "--robust"),
        std::pair(options_.outliers, "--outliers"),
        std::pair(options_.mahalanobis, "--mahalanobis"),
        std::pair(options_.outliers, "--outliers"),
        std::pair(options_.mahalanobis, "--mahalanobis"),
        std::pair(options_.histogram, "--histogram")}) {
    if (given) {
      throw Error("{}: the values, which it needs, take more than {} MiB; --memory MIB allows more",
                  option, options_.memory);
    }
  }
  drop_values();
  left_out_ = true;
}

/// Makes room for all rows at once, as far as their number can be told.
template <class T>
void Analysis<T>::make_room() {
  int64_t bytes = group_numbers_.bytes();
  for (const auto& of_column : groups_) {
    bytes += static_cast<int64_t>(of_column.size() * sizeof of_column[0]);
  }
  for (auto* samples : {&columns_, &whole_}) {
    for (const Values& sample : *samples) bytes += sample.bytes_kept() + sample.bytes_waiting();
  }
  const int64_t limit = options_.memory << 20;
  if (bytes > limit) return leave_values_out();
  const double whole = static_cast<double>(table_.bytes_in_all());
  if (made_room_ || whole == 0) return;
  made_room_ = true;
  const double part = static_cast<double>(table_.bytes_read()) / whole;
  const double rows = static_cast<double>(rows_) / part * 1.02 + 1000;
  if (static_cast<double>(bytes) / part * 1.02 > static_cast<double>(limit)) return;
  for (size_t j = 0; j < columns_.size(); ++j) {
    const double present = 1 - static_cast<double>(missing_[j]) / static_cast<double>(rows_);
    columns_[j].reserve(static_cast<int64_t>(rows * present));
  }
}

template <class T>
void Analysis<T>::take_block() {
  waiting_ = 0;
  try {
    if (keeps_values_) make_room();
    if (em_table_ && em_table_->bytes() > options_.memory << 20) {
      throw Error("--missing em: the values take more than {} MiB; --memory MIB allows more",
                  options_.memory);
    }
    std::vector<Values>* const all[] = {&columns_, &pairs_, &whole_};
    for (std::vector<Values>* samples : all) {
      for_each(samples->size(), [&](size_t i) { (*samples)[i].take_block(services_); });
    }
  } catch (const std::bad_alloc&) {
    throw Error("out of memory; --memory MIB below {} keeps fewer values", options_.memory);
  }
}

// ---- Results ------------------------------------------------------------------------------------

template <class T>
void Analysis<T>::expect_results() const {
  const bool some = std::ranges::any_of(columns_, [](const Values& s) { return s.count() > 0; });
  const bool matrices = whole_.empty() || complete_ > 0;
  if (some && matrices) return;
  if (weightless_ > 0) {
    throw Error("{}: no row is left: {} have weight 0, {} a missing cell", table_.name(),
                weightless_, dropped_);
  }
  if (options_.missing != "drop" && matrices) {
    throw Error("{}: no row is left: all cells are missing, or the groups", table_.name());
  }
  throw Error(
      "{}: no row is complete; --missing pairwise takes the rows that each pair of columns "
      "has, --missing available each column's own values; or --select fewer columns",
      table_.name());
}

/// All but quantiles.
template <class T>
Summary Analysis<T>::summary(size_t column) {
  const Values& sample = columns_[column];
  Summary s;
  s.count = sample.count();
  s.missing = missing_[column];
  if (s.count == 0) return s;
  s.sum = sample.sum(0);
  s.mean = sample.mean(0);
  s.standard_deviation = sample.standard_deviation(0);
  s.variance = sample.covariance(0, 0);
  s.minimum = sample.minimum(0);
  s.maximum = sample.maximum(0);
  s.skewness = sample.skewness(0);
  s.kurtosis = sample.kurtosis(0);
  if (s.count > 1) {
    set_interval(s, sample.weight_sum(), sample.weight_square_sum(), options_.confidence);
  }
  return s;
}

template <class T>
void Analysis<T>::report_columns(Report& report) {
  report.columns.resize(columns_.size());
  for_each(
      columns_.size(),
      [&](size_t j) {
        const Values& sample = columns_[j];
        ColumnReport& c = report.columns[j];
        c = {summary(j), choice_.name(choice_.columns[j]), {}};
        c.quantiles = sample.quantiles(figures_.orders(), services_);
        if (options_.histogram) c.histogram = histogram_of(sample.values(), options_.bins);
        if (figures_.has("mode") || figures_.has("mode_count")) set_mode(c, sample.values());
      },
      may_copy_together());
  report.figures = figures_.list();
  if (summarised_ && !figures_.orders().empty()) {
    report.notes.push_back(fmt::format(
        "quantiles are values whose rank is off by at most {} of the count{}",
        options_.epsilon > 0 ? options_.epsilon : epsilon_by_default,
        options_.epsilon > 0 ? ""
                             : fmt::format(": the values take more than {} MiB; --memory MIB "
                                           "allows more, --eps E asks for another part",
                                           options_.memory)));
  }
  if (!left_out_) return;
  report.notes.push_back(
      fmt::format("quartiles are left out: the values take more than {} MiB; --memory MIB allows "
                  "more",
                  options_.memory));
}

template <class T>
void Analysis<T>::report_groups(Report& report) {
  GroupReport& groups = report.groups.emplace();
  for (const size_t column : choice_.by) groups.by.push_back(choice_.name(column));
  groups.figures = group_figures_.list();
  const std::vector<uint32_t> sorted = group_numbers_.sorted();
  std::vector<size_t> place(sorted.size());
  for (size_t i = 0; i < sorted.size(); ++i) {
    groups.labels.push_back(group_numbers_.labels()[sorted[i]]);
    place[sorted[i]] = i;
  }
  const size_t p = columns_.size(), figures = groups.figures.size();
  groups.values.resize(sorted.size() * p * figures);
  SummaryOptions wanted = {group_figures_.has("mode") || group_figures_.has("mode_count"),
                           group_figures_.has("standard_error") || group_figures_.has("mean_low") ||
                               group_figures_.has("mean_high"),
                           group_figures_.has("skewness") || group_figures_.has("excess_kurtosis"),
                           options_.confidence, group_figures_.orders()};
  for_each(
      p,
      [&](size_t j) {
        summarize_groups(columns_[j].values(), columns_[j].weights(),
                         std::span<const uint32_t>(groups_[j]),
                         std::span<const int64_t>(group_rows_), wanted, orv_threads_serial(),
                         [&](size_t group, const Summary& summary) {
                           double* to = &groups.values[(place[group] * p + j) * figures];
                           for (const Figure& f : groups.figures) *to++ = f.value(summary);
                         });
      },
      may_copy_together());
}

template <class T>
Matrix Analysis<T>::matrix(bool correlation) {
  const size_t p = values_.size();
  const auto entry = [&](const Values& s, size_t i, size_t j) {
    return correlation ? s.correlation(i, j) : s.covariance(i, j);
  };
  Matrix result(p * p);
  for (size_t i = 0; i < p; ++i) {
    result[i * (p + 1)] = pairwise_ ? entry(columns_[i], 0, 0) : entry(whole_[0], i, i);
    for (size_t j = i + 1; j < p; ++j) {
      result[i * p + j] = result[j * p + i] =
          pairwise_ ? entry(pair(i, j), 0, 1) : entry(whole_[0], i, j);
    }
  }
  return result;
}

/// Of all columns, or of those that have the role.
template <class T>
Strings Analysis<T>::names(int64_t role) const {
  Strings result;
  for (size_t j = 0; j < values_.size(); ++j) {
    if (role == 0 || choice_.roles[j] == role) {
      result.push_back(choice_.name(choice_.columns[j]));
    }
  }
  return result;
}

template <class T>
void Analysis<T>::report_matrices(Report& report) {
  if (em_table_) return report_em(*em_table_, names(0), report);
  if (options_.covariance) report.matrices.push_back({"Covariance", names(0), matrix(false)});
  if (options_.correlation) report.matrices.push_back({"Correlation", names(0), matrix(true)});
  if (options_.repair_correlation) {
    report_repaired_correlation<T>(matrix(true), names(0), services_, report);
  }
  if (!options_.partial.empty()) {
    const Partial partial = partial_covariance<T>(matrix(false), choice_.roles, services_);
    const std::string given = fmt::format(" given {}", fmt::join(names(-1), ", "));
    report.matrices.push_back({"Partial covariance" + given, names(1), partial.covariance});
    report.matrices.push_back({"Partial correlation" + given, names(1), partial.correlation});
  }
  if (choice_.by.empty() || !(options_.covariance || options_.correlation)) return;
  Matrix pooled = whole_[0].pooled(whole_groups_, group_numbers_.size(), services_);
  const std::string within = fmt::format(" within {}", fmt::join(report.groups->by, ", "));
  const Matrix correlation = correlation_of(pooled);
  if (options_.covariance) {
    report.matrices.push_back({"Pooled covariance" + within, names(0), std::move(pooled)});
  }
  if (options_.correlation) {
    report.matrices.push_back({"Pooled correlation" + within, names(0), correlation});
  }
}

template <class T>
Report Analysis<T>::report() {
  expect_results();
  Report report;
  report.file = table_.name();
  report.notes = choice_.notes;
  if (texts_ > 0) {
    report.notes.push_back(
        fmt::format("cells with text that are taken as missing: {}, the first in {}{}", texts_,
                    first_text_, table_.hint()));
  }
  report.rows = rows_;
  report.dropped = dropped_;
  report.weightless = weightless_;
  if (!whole_.empty()) report.complete = complete_;
  report.single = std::is_same_v<T, float>;
  if (choice_.weights) {
    report.weights = choice_.name(*choice_.weights);
    report.weight_sum = weight_sum_;
  }
  try {
    report_columns(report);
    if (!choice_.by.empty()) report_groups(report);
    if (!options_.robust.empty()) {
      report_robust<T>(whole_[0], names(0), whole_rows_, options_, services_, report);
    }
    if (options_.outliers) {
      report_outliers<T>(whole_[0], names(0), whole_rows_, options_, services_, report);
    }
    if (options_.mahalanobis) report_mahalanobis<T>(whole_[0], whole_rows_, report);
    report_matrices(report);
  } catch (const std::bad_alloc&) {
    throw Error("out of memory; --memory MIB below {} keeps fewer values", options_.memory);
  }
  return report;
}

}  // namespace

template <class T>
Report analyse(const StatsOptions& options) {
  return Analysis<T>(options).run();
}

template Report analyse<float>(const StatsOptions& options);
template Report analyse<double>(const StatsOptions& options);

}  // namespace orv_cli
