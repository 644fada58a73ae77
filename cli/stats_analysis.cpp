#include "stats_analysis.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <orv/threads.h>

#include <algorithm>
#include <cmath>
#include <deque>
#include <exception>
#include <functional>
#include <limits>
#include <new>
#include <unordered_map>

#include "error.hpp"
#include "progress.hpp"
#include "stats_choice.hpp"
#include "stats_correlation.hpp"
#include "stats_outliers.hpp"
#include "stats_robust.hpp"

namespace orv_cli {
namespace {

constexpr int64_t block_values = 1 << 19;  // that are read before they are computed with
constexpr size_t most_pairwise = 200;      // columns that all pairs are made of
constexpr size_t most_groups = 1000;       // all observations are looked through for each
constexpr size_t narrow = 8;               // variables of a sample that needs no whole matrix

std::vector<double> orders_of(const std::string& text) {
  if (text.empty()) return {0.25, 0.5, 0.75};
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

// ---- The run ------------------------------------------------------------------------------------

template <class T>
class Analysis {
 public:
  explicit Analysis(const StatsOptions& options)
      : options_(options),
        services_(orv_threads_reproducible()),
        orders_(orders_of(options.quantiles)),
        table_(input_of(options.input), column_limit()),
        choice_(table_, options),
        pairwise_(options.missing == "pairwise"),
        matrix_(options.covariance || options.correlation || options.repair_correlation ||
                !options.partial.empty()),
        values_(choice_.columns.size()),
        missing_(choice_.columns.size()) {
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
  void expect_room(size_t groups) const;
  void make_samples();
  void take(const CsvRow& row);
  void take_complete();
  void take_pairs();
  T cell(const CsvRow& row, size_t column);
  bool take_weight(const CsvRow& row);
  bool take_group(const CsvRow& row);
  void check_empty_columns(const CsvRow& row) const;
  void take_block();
  void make_room();
  void leave_values_out();
  template <class Function>
  void for_each_sample(Function function);
  Values& pair(size_t i, size_t j) {
    return pairs_[i * (2 * values_.size() - i - 1) / 2 + j - i - 1];
  }

  Report report();
  void report_columns(Report& report);
  void report_matrices(Report& report);
  void expect_results() const;
  Strings names(int64_t role) const;
  Matrix matrix(bool correlation);

  const StatsOptions& options_;
  const SSThreadServices* const services_;
  const std::vector<double> orders_;
  Table table_;
  const Choice choice_;
  const bool pairwise_;
  const bool matrix_;

  std::vector<Values> samples_, pairs_;
  std::vector<T> values_;  // of the row in hand, NaN where missing
  T weight_ = 1;
  std::vector<int64_t> missing_;    // cells of each column
  std::vector<int64_t> groups_;     // of each row that was kept
  std::vector<int64_t> kept_rows_;  // their numbers, from 1
  std::unordered_map<std::string, int64_t> group_numbers_;
  Strings group_labels_;
  int64_t rows_ = 0, dropped_ = 0, weightless_ = 0;
  double weight_sum_ = 0;
  int64_t waiting_ = 0, block_rows_ = 0;
  bool keeps_values_ = true, made_room_ = false;
  int64_t texts_ = 0;  // cells with text, taken as missing
  std::string first_text_;
};

/// What a column, and an element of the matrices, takes on its way from the cell to the report. A
/// report in JSON is in memory as a tree.
constexpr int64_t column_bytes(bool json) { return json ? 3584 : 1792; }
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

/// For the matrix of each thread and of each group, and one that is printed.
template <class T>
void Analysis<T>::expect_room(size_t groups) const {
  const auto p = static_cast<double>(values_.size());
  const auto matrices = static_cast<double>(groups) + services_->max_threads();
  const int64_t printed = element_bytes(options_.format == "json");
  const double bytes = p * p * (matrices * sizeof(T) + static_cast<double>(printed));
  if (bytes <= static_cast<double>(memory())) return;
  throw Error("matrices of {} columns take {:.0f} MiB; --select fewer, or --memory MIB allows more",
              values_.size(), std::ceil(bytes / (1 << 20)));
}

/// Complete rows make one sample where a matrix of all variables is wanted, else narrow ones, for
/// which the sum of products costs little. Pairwise, every variable and every pair is a sample.
template <class T>
void Analysis<T>::make_samples() {
  const size_t p = values_.size();
  const bool weighted = choice_.weights.has_value();
  const bool whole = !pairwise_ && (matrix_ || choice_.by || options_.points());
  const size_t width = whole ? p : pairwise_ ? 1 : narrow;
  if (pairwise_ && choice_.by) {
    throw Error("--by {}: groups are made of complete rows; allowed are --missing drop and fail",
                in_quotes(options_.by));
  }
  if (pairwise_ && matrix_ && p > most_pairwise) {
    throw Error("--missing pairwise: matrices of {} columns; allowed are {}, choose with --select",
                p, most_pairwise);
  }
  if (!options_.robust.empty()) check_robust(options_);
  if (options_.outliers || options_.mahalanobis) check_outliers(options_);
  if (whole) expect_room(1);
  for (size_t first = 0; first < p; first += width) {
    samples_.emplace_back(std::min(width, p - first), weighted, true);
  }
  if (pairwise_ && matrix_) {
    pairs_.assign(p * (p - 1) / 2, Values(2, weighted, false, Values::Wanted::covariance));
  }
  const auto width_in_all = static_cast<int64_t>(p + 2 * pairs_.size());
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
  const std::string label(row.cells[*choice_.by]);
  if (table_.is_missing(label)) {
    if (options_.missing == "fail") {
      throw Error("{}: the cell is {}; a group is needed, or --missing drop",
                  table_.place(row.line, *choice_.by), label.empty() ? "empty" : label);
    }
    return false;
  }
  const auto [at, is_new] =
      group_numbers_.try_emplace(label, static_cast<int64_t>(group_labels_.size()));
  if (is_new) {
    if (group_labels_.size() == most_groups) {
      throw Error("{}: more than {} groups; --by needs a column of fewer different values",
                  table_.place(row.line, *choice_.by), most_groups);
    }
    group_labels_.push_back(label);
  }
  groups_.push_back(at->second);
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
void Analysis<T>::take_complete() {
  if (options_.points()) kept_rows_.push_back(rows_);
  const T* next = values_.data();
  for (Values& sample : samples_) {
    sample.add({next, sample.variables()}, weight_);
    next += sample.variables();
  }
}

template <class T>
void Analysis<T>::take_pairs() {
  const size_t p = values_.size();
  for (size_t i = 0; i < p; ++i) {
    if (std::isnan(values_[i])) continue;
    samples_[i].add({&values_[i], 1}, weight_);
    for (size_t j = i + 1; j < p && !pairs_.empty(); ++j) {
      const T both[] = {values_[i], values_[j]};
      if (!std::isnan(both[1])) pair(i, j).add(both, weight_);
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
  if (!pairwise_ && (!complete || (choice_.by && !take_group(row)))) {
    ++dropped_;
    return;
  }
  weight_sum_ += weight_;
  pairwise_ ? take_pairs() : take_complete();
}

// ---- Blocks -------------------------------------------------------------------------------------

void call_function(int32_t item, int32_t, int32_t, void* args) {
  (*static_cast<std::function<void(int32_t)>*>(args))(item);
}

/// Many samples go to the threads one each; of few samples each has all threads. Neither changes a
/// digit. An exception waits until all are back.
template <class T>
template <class Function>
void Analysis<T>::for_each_sample(Function function) {
  const auto count = static_cast<int32_t>(samples_.size() + pairs_.size());
  std::vector<std::exception_ptr> failures(static_cast<size_t>(count));
  std::function<void(int32_t)> one = [&](int32_t item) {
    const auto i = static_cast<size_t>(item);
    try {
      function(i, i < samples_.size() ? samples_[i] : pairs_[i - samples_.size()]);
    } catch (...) {
      failures[i] = std::current_exception();
    }
  };
  if (count >= orv_threads_pool()->max_threads()) {
    services_->run_items(count, 0, &one, call_function);
  } else {
    for (int32_t item = 0; item < count; ++item) one(item);
  }
  for (const std::exception_ptr& failure : failures) {
    if (failure) std::rethrow_exception(failure);
  }
}

/// Values are kept for quantiles and groups only.
template <class T>
void Analysis<T>::leave_values_out() {
  for (const auto& [given, option] :
       {std::pair(!options_.quantiles.empty(), "--quantiles"),
        std::pair(!options_.robust.empty(), "--robust"), std::pair(options_.outliers, "--outliers"),
        std::pair(options_.mahalanobis, "--mahalanobis"),
        std::pair(choice_.by.has_value(), "--by")}) {
    if (given) {
      throw Error("{}: the values, which it needs, take more than {} MiB; --memory MIB allows more",
                  option, options_.memory);
    }
  }
  for (Values& sample : samples_) sample.drop_values();
  keeps_values_ = false;
}

/// Makes room for all rows at once, as far as their number can be told.
template <class T>
void Analysis<T>::make_room() {
  int64_t bytes = static_cast<int64_t>(groups_.size() * sizeof groups_[0]);
  for (const Values& sample : samples_) bytes += sample.bytes_kept() + sample.bytes_waiting();
  const int64_t limit = options_.memory << 20;
  if (bytes > limit) return leave_values_out();
  const double whole = static_cast<double>(table_.bytes_in_all());
  if (made_room_ || whole == 0) return;
  made_room_ = true;
  const double part = static_cast<double>(table_.bytes_read()) / whole;
  const double rows = static_cast<double>(rows_) / part * 1.02 + 1000;
  if (static_cast<double>(bytes) / part * 1.02 > static_cast<double>(limit)) return;
  for (Values& sample : samples_) sample.reserve(static_cast<int64_t>(rows));
}

template <class T>
void Analysis<T>::take_block() {
  waiting_ = 0;
  try {
    if (keeps_values_) make_room();
    for_each_sample([&](size_t, Values& sample) { sample.take_block(services_); });
  } catch (const std::bad_alloc&) {
    throw Error("out of memory; --memory MIB below {} keeps fewer values", options_.memory);
  }
}

// ---- Results ------------------------------------------------------------------------------------

template <class T>
void Analysis<T>::expect_results() const {
  if (std::ranges::any_of(samples_, [](const Values& s) { return s.count() > 0; })) return;
  if (weightless_ > 0) {
    throw Error("{}: no row is left: {} have weight 0, {} a missing cell", table_.file().name(),
                weightless_, dropped_);
  }
  throw Error(
      "{}: no row is complete; --missing pairwise takes each column's own values, --select "
      "fewer columns",
      table_.file().name());
}

template <class T>
void Analysis<T>::report_columns(Report& report) {
  std::vector<std::vector<double>> quantiles(samples_.size());
  if (keeps_values_) {
    report.orders = orders_;
    for_each_sample([&](size_t i, Values& sample) {
      if (i < samples_.size()) quantiles[i] = sample.quantiles(orders_, services_);
    });
  } else {
    report.notes.push_back(fmt::format(
        "quartiles are left out: the values take more than {} MiB; --memory MIB allows more",
        options_.memory));
  }
  size_t column = 0;
  for (size_t i = 0; i < samples_.size(); ++i) {
    const Values& s = samples_[i];
    for (size_t j = 0; j < s.variables(); ++j, ++column) {
      ColumnReport c = {choice_.name(choice_.columns[column]),
                        s.count(),
                        missing_[column],
                        s.mean(j),
                        s.standard_deviation(j),
                        s.minimum(j),
                        s.maximum(j),
                        s.skewness(j),
                        s.kurtosis(j),
                        {}};
      if (keeps_values_) {
        const auto first = quantiles[i].begin() + static_cast<std::ptrdiff_t>(j * orders_.size());
        c.quantiles.assign(first, first + static_cast<std::ptrdiff_t>(orders_.size()));
      }
      report.columns.push_back(std::move(c));
    }
  }
}

template <class T>
Matrix Analysis<T>::matrix(bool correlation) {
  const size_t p = values_.size();
  const auto entry = [&](const Values& s, size_t i, size_t j) {
    return correlation ? s.correlation(i, j) : s.covariance(i, j);
  };
  Matrix result(p * p);
  for (size_t i = 0; i < p; ++i) {
    result[i * (p + 1)] = pairwise_ ? entry(samples_[i], 0, 0) : entry(samples_[0], i, i);
    for (size_t j = i + 1; j < p; ++j) {
      result[i * p + j] = result[j * p + i] =
          pairwise_ ? entry(pair(i, j), 0, 1) : entry(samples_[0], i, j);
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
  if (choice_.by) {
    expect_room(group_labels_.size());
    report.groups = {
        choice_.name(*choice_.by), group_labels_,
        samples_[0].pooled(groups_, static_cast<int64_t>(group_labels_.size()), services_)};
    report.matrices.push_back({"Pooled covariance within " + report.groups->by, names(0),
                               report.groups->results.covariance});
  }
}

template <class T>
Report Analysis<T>::report() {
  expect_results();
  Report report;
  report.file = table_.file().name();
  report.notes = choice_.notes;
  if (texts_ > 0) {
    report.notes.push_back(
        fmt::format("cells with text that are taken as missing: {}, the first in {}{}", texts_,
                    first_text_, table_.hint()));
  }
  report.rows = rows_;
  report.dropped = dropped_;
  report.weightless = weightless_;
  report.single = std::is_same_v<T, float>;
  if (choice_.weights) {
    report.weights = choice_.name(*choice_.weights);
    report.weight_sum = weight_sum_;
  }
  try {
    report_columns(report);
    if (!options_.robust.empty()) {
      report_robust<T>(samples_[0], names(0), kept_rows_, options_, services_, report);
    }
    if (options_.outliers) {
      report_outliers<T>(samples_[0], names(0), kept_rows_, options_, services_, report);
    }
    if (options_.mahalanobis) report_mahalanobis<T>(samples_[0], kept_rows_, report);
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
