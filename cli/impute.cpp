// SPDX-License-Identifier: MIT
// orv impute: fills the missing cells of a table.
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <nlohmann/json.hpp>

#include "commands.hpp"
#include "error.hpp"
#include "missing_table.hpp"
#include "output.hpp"
#include "stats_choice.hpp"

namespace orv_cli {
namespace {

constexpr double undefined = std::numeric_limits<double>::quiet_NaN();

struct ImputeOptions {
  StatsOptions columns;  // the input, and which of its columns
  std::string method = "mi";
  int32_t imputations = 5, chain = 30, em_iterations = 2000;
  uint64_t seed = 1;
  std::string output;
  std::string format = "table";
};

// ---- The table ----------------------------------------------------------------------------------

/// A file's cells as they were read, and its columns of numbers.
class Cells {
 public:
  explicit Cells(const ImputeOptions& options)
      : table_(input_of(options.columns.input)),
        choice_(table_, options.columns),
        numbers_(names()),
        delimiter_(input_of(options.columns.input).csv.delimiter),
        comment_(input_of(options.columns.input).csv.comment) {
    std::vector<double> row(choice_.columns.size());
    while (const CsvRow* cells = table_.next()) {
      for (size_t j = 0; j < row.size(); ++j) {
        const size_t column = choice_.columns[j];
        const std::string_view text = cells->cells[column];
        row[j] =
            table_.is_missing(text) ? undefined : table_.number<double>(text, cells->line, column);
      }
      numbers_.add(row.data());
      rows_.emplace_back(cells->cells.begin(), cells->cells.end());
    }
  }

  const MissingTable& numbers() const { return numbers_; }
  const std::vector<std::string>& notes() const { return choice_.notes; }
  std::string name(size_t j) const { return choice_.name(choice_.columns[j]); }

  /// The table with numbers in place of its missing cells, in the order of rows and columns.
  std::string completed(const double* filled) const {
    fmt::memory_buffer text;
    if (!table_.names().empty()) append_row(text, table_.names());
    for (size_t i = 0; i < rows_.size(); ++i) {
      Strings cells = rows_[i];
      for (size_t j = 0; j < choice_.columns.size(); ++j) {
        if (std::isnan(numbers_.row(i)[j])) cells[choice_.columns[j]] = number_text(*filled++);
      }
      append_row(text, cells);
    }
    return fmt::to_string(text);
  }

 private:
  Strings names() const {
    Strings result;
    for (const size_t column : choice_.columns) result.push_back(choice_.name(column));
    return result;
  }

  std::string number_text(double x) const {
    std::string text = fmt::format("{:.10g}", x);
    for (char& c : text) c = c == '.' ? table_.format().decimal() : c;
    return text;
  }

  void append_row(fmt::memory_buffer& text, const Strings& cells) const {
    for (size_t j = 0; j < cells.size(); ++j) {
      if (j > 0) text.push_back(delimiter_);
      append_cell(text, cells[j]);
    }
    text.push_back('\n');
  }

  /// In quotes where it would be read otherwise, a lone empty cell among them.
  void append_cell(fmt::memory_buffer& text, std::string_view cell) const {
    const char special[] = {delimiter_, '"', '\r', '\n', comment_ != 0 ? comment_ : '"'};
    const bool quoted = cell.find_first_of({special, sizeof special}) != cell.npos ||
                        (cell.empty() && (table_.width() == 1 || delimiter_ == ' '));
    if (!quoted) return text.append(cell);
    text.push_back('"');
    for (const char c : cell) {
      if (c == '"') text.push_back('"');
      text.push_back(c);
    }
    text.push_back('"');
  }

  Table table_;
  const Choice choice_;
  MissingTable numbers_;
  char delimiter_, comment_;
  std::vector<Strings> rows_;
};

/// "done.csv" becomes "done-2.csv" for the second of several.
std::string numbered(const std::string& file, int32_t number, int32_t of) {
  if (of == 1) return file;
  std::filesystem::path path(file);
  path.replace_filename(
      fmt::format("{}-{}{}", path.stem().string(), number, path.extension().string()));
  return path.string();
}

void write_file(const std::string& file, const std::string& text) {
  std::ofstream stream(file, std::ios::binary);
  stream << text;
  stream.close();
  if (!stream) throw Error("--output: cannot write {}; allowed is a file", in_quotes(file));
}

// ---- Rubin's rules ------------------------------------------------------------------------------

/// A column's mean from several imputations (Rubin 1987). Variances are those of the mean.
struct PooledMean {
  double mean, within, between, variance, df, missing_information;
};

PooledMean pool(const std::vector<double>& means, const std::vector<double>& variances) {
  const auto m = static_cast<double>(means.size());
  PooledMean r = {0, 0, 0, undefined, undefined, undefined};
  for (size_t i = 0; i < means.size(); ++i) r.mean += means[i] / m, r.within += variances[i] / m;
  if (m < 2) {
    r.between = undefined;
    return r;
  }
  const auto [least, largest] = std::ranges::minmax(means);
  if (least == largest) r.mean = least;  // nothing is missing
  for (const double mean : means) r.between += (mean - r.mean) * (mean - r.mean) / (m - 1);
  const double added = (1 + 1 / m) * r.between;
  r.variance = r.within + added;
  r.missing_information = r.variance > 0 ? added / r.variance : 0;
  r.df = (m - 1) / (r.missing_information * r.missing_information);
  return r;
}

/// Of each column. `filled` has the missing values of each imputation in turn.
std::vector<PooledMean> pool_all(const MissingTable& table, const std::vector<double>& filled,
                                 int32_t m) {
  const size_t p = table.columns(), per_imputation = filled.size() / static_cast<size_t>(m);
  const auto n = static_cast<double>(table.rows());
  std::vector<std::vector<double>> means(p), variances(p);
  for (int32_t k = 0; k < m; ++k) {
    std::vector<std::vector<double>> columns(p);
    const double* next = filled.data() + static_cast<size_t>(k) * per_imputation;
    for (size_t i = 0; i < table.rows(); ++i) {
      for (size_t j = 0; j < p; ++j) {
        const double x = table.row(i)[j];
        columns[j].push_back(std::isnan(x) ? *next++ : x);
      }
    }
    for (size_t j = 0; j < p; ++j) {
      double mean = 0, squares = 0;
      for (const double x : columns[j]) mean += x / n;
      for (const double x : columns[j]) squares += (x - mean) * (x - mean);
      means[j].push_back(mean);
      variances[j].push_back(squares / (n - 1) / n);
    }
  }
  std::vector<PooledMean> result;
  for (size_t j = 0; j < p; ++j) result.push_back(pool(means[j], variances[j]));
  return result;
}

/// Heads and figures of the report, in one order.
constexpr const char* heads[] = {"mean", "standard_error",     "variance", "within", "between",
                                 "df",   "missing_information"};
std::vector<double> figures(const PooledMean& r) {
  return {r.mean, std::sqrt(r.variance), r.variance, r.within, r.between,
          r.df,   r.missing_information};
}

std::string as_table(const Cells& cells, const std::vector<PooledMean>& pooled) {
  size_t width = 0;
  for (size_t j = 0; j < pooled.size(); ++j) {
    width = std::max(width, one_line(cells.name(j), 24).size());
  }
  std::string text = fmt::format("{:<{}}  {:>7}", "", width, "missing");
  for (const char* head :
       {"mean", "std. error", "variance", "within", "between", "df", "mis. inf."}) {
    text += fmt::format("  {:>11}", head);
  }
  text += '\n';
  for (size_t j = 0; j < pooled.size(); ++j) {
    text += fmt::format("{:<{}}  {:>7}", one_line(cells.name(j), 24), width,
                        cells.numbers().missing(j));
    for (const double x : figures(pooled[j])) {
      text += std::isnan(x) ? fmt::format("  {:>11}", "-") : fmt::format("  {:>11.5g}", x);
    }
    text += '\n';
  }
  return text;
}

std::string as_csv(const Cells& cells, const std::vector<PooledMean>& pooled) {
  std::string text = fmt::format("column,missing,{}\n", fmt::join(heads, ","));
  for (size_t j = 0; j < pooled.size(); ++j) {
    std::string name = cells.name(j);
    for (size_t at = 0; (at = name.find('"', at)) != name.npos; at += 2) name.insert(at, 1, '"');
    const bool quoted = name.find_first_of(",\"\r\n") != name.npos;
    text += fmt::format("{1}{0}{1},{2}", name, quoted ? "\"" : "", cells.numbers().missing(j));
    for (const double x : figures(pooled[j])) {
      text += std::isnan(x) ? "," : fmt::format(",{}", x);
    }
    text += '\n';
  }
  return text;
}

std::string as_json(const Cells& cells, const std::vector<PooledMean>& pooled) {
  nlohmann::ordered_json json = {{"columns", nlohmann::ordered_json::array()}};
  for (size_t j = 0; j < pooled.size(); ++j) {
    auto& column = json["columns"].emplace_back();
    column = {{"name", cells.name(j)}, {"missing", cells.numbers().missing(j)}};
    const std::vector<double> values = figures(pooled[j]);
    for (size_t k = 0; k < values.size(); ++k) {
      if (std::isfinite(values[k])) {
        column[heads[k]] = values[k];
      } else {
        column[heads[k]] = nullptr;
      }
    }
  }
  return json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

// ---- The command --------------------------------------------------------------------------------

void note(const std::string& text) { fmt::print(stderr, "orv: note: {}\n", text); }

void fill_by_em(const ImputeOptions& options, const Cells& cells) {
  const MissingTable& table = cells.numbers();
  const EmResult em = table.em(options.em_iterations, "--method em");
  const std::vector<double> filled = table.expected(em.law);
  const std::string text = cells.completed(filled.data());
  options.output.empty() ? write(text.data(), text.size()) : write_file(options.output, text);
  note(fmt::format("{} cells filled; {} iterations of EM", filled.size(), em.iterations));
  if (!em.converged) {
    note(fmt::format("EM had not come to rest; --em-iterations above {} gives it more",
                     options.em_iterations));
  }
}

void fill_by_imputation(const ImputeOptions& options, const Cells& cells) {
  const MissingTable& table = cells.numbers();
  const int32_t m = options.imputations;
  if (table.rows() < table.columns() + 2) {
    throw Error("--method mi: {} rows of {} columns; at least {} rows are needed", table.rows(),
                table.columns(), table.columns() + 2);
  }
  const std::vector<double> filled =
      table.impute(m, options.chain, options.em_iterations, options.seed, "--method mi");
  const std::vector<PooledMean> pooled = pool_all(table, filled, m);
  const size_t per_imputation = filled.size() / static_cast<size_t>(m);
  for (int32_t k = 0; k < m && !options.output.empty(); ++k) {
    write_file(numbered(options.output, k + 1, m),
               cells.completed(filled.data() + static_cast<size_t>(k) * per_imputation));
  }
  const std::string text = options.format == "json"  ? as_json(cells, pooled)
                           : options.format == "csv" ? as_csv(cells, pooled)
                                                     : as_table(cells, pooled);
  write(text.data(), text.size());
  if (options.output.empty()) note("no tables are written; --output FILE writes them");
}

void impute(const ImputeOptions& options) {
  const Cells cells(options);
  for (const std::string& text : cells.notes()) note(text);
  if (options.method == "em") {
    fill_by_em(options, cells);
  } else {
    fill_by_imputation(options, cells);
  }
}

constexpr const char* footer = R"(
Without --select all columns of numbers take part; all others are written as they were read.

Both methods take rows for draws from one multivariate normal law, and cells for missing at random:
whether one is missing may depend on the cells that are there, but not on what would stand in it.
  em   fills each cell with its expected value, given the others of its row, under mean and
       covariance of maximum likelihood (EM). One table; its variances are too small.
  mi   multiple imputation: -m tables whose missing cells, and the mean and covariance behind them,
       are drawn at random (data augmentation). What is computed from each of them is pooled by
       Rubin's rules, which for means is done here:
         variance   within + (1 + 1/m) between: the mean of the tables' variances of the mean, and
                    the variance of their means
         df         degrees of freedom of an interval about the mean by Student's law
         mis. inf.  part of the information that is missing

The tables are written as CSV with only the missing cells changed. em writes to standard output
where there is no --output; mi to FILE with -1, -2, ... before its extension.

Examples:
  orv impute airquality.csv --method em > complete.csv
  orv impute airquality.csv --method mi -m 20 --seed 7 --output done.csv)";

}  // namespace

void add_impute_command(CLI::App& app) {
  auto* command = app.add_subcommand("impute", "Fill the missing cells of a table");
  auto options = std::make_shared<ImputeOptions>();
  const auto add = [&](const char* name, auto& value, const char* text, const char* help) {
    return command->add_option(name, value, help)->option_text(text);
  };
  add("FILE", options->columns.input.files, " ",
      "Files to read; -, the default, is standard input");
  add_input_options(*command, options->columns.input);
  add("--select", options->columns.select, "COLUMNS",
      "Only these columns, with commas between, and ranges: 1,3-5 or x:z");
  add("--exclude", options->columns.exclude, "COLUMNS", "Not these columns");
  add("--method", options->method, "METHOD", "mi (default) or em")
      ->check(CLI::IsMember({"em", "mi"}));
  add("-m", options->imputations, "M", "How many imputations, 1 to 10000 (default 5)")
      ->check(CLI::Range(1, 10000));
  add("--seed", options->seed, "N", "For mi, a whole number from 0 (default 1)");
  add("--output", options->output, "FILE", "Where completed tables go");
  add("--chain", options->chain, "N",
      "For mi, draws before each table, more where much is missing\n(default 30)")
      ->check(CLI::Range(1, 1000000));
  add("--em-iterations", options->em_iterations, "N", "At most (default 2000)")
      ->check(CLI::Range(1, 1000000000));
  add("--format", options->format, "FORMAT", "Of the pooled means: table (default), csv or json")
      ->check(CLI::IsMember({"table", "csv", "json"}));
  command->footer(std::string(input_help) + footer);
  command->callback([options] { impute(*options); });
}

}  // namespace orv_cli
