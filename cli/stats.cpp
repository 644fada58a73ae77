// SPDX-License-Identifier: MIT
// orv stats: summary statistics of the columns of a file.
#include <fmt/format.h>
#include <orv/threads.h>

#include <CLI/CLI.hpp>
#include <memory>

#include "commands.hpp"
#include "distance_plot.hpp"
#include "error.hpp"
#include "output.hpp"
#include "picture.hpp"
#include "stats_analysis.hpp"
#include "stats_picture.hpp"

namespace orv_cli {
namespace {

constexpr int64_t memory_by_default = sizeof(void*) == 8 ? 1024 : 512;  // MiB
constexpr int64_t most_memory = sizeof(void*) == 8 ? 1 << 24 : 3072;

void stats(const StatsOptions& options) {
  if (options.partial.empty() != options.given.empty()) {
    throw Error("{} {}: --partial and --given go together; allowed are --partial Y1,Y2 --given Z1",
                options.given.empty() ? "--partial" : "--given",
                in_quotes(options.partial + options.given));
  }
  if (options.plot == "-" && options.format != "table") {
    throw Error("--plot -: characters go with --format table only; a FILE goes with {}, too",
                options.format);
  }
  const int with_distances = (options.robust.empty() ? 0 : 1) + options.outliers;
  if (options.distances && with_distances == 0) {
    throw Error("--distances: distances are made by --robust, which is ogk or tbs, and --outliers");
  }
  const int distance_kinds = with_distances + options.mahalanobis;
  if (!options.plot.empty() && distance_kinds > 1) {
    throw Error(
        "--plot {}: it goes with one of --robust, which is ogk or tbs, --outliers and "
        "--mahalanobis, or with none of them",
        in_quotes(options.plot));
  }
  if (!options.outliers && options.alpha != StatsOptions().alpha) {
    throw Error("--alpha {}: it goes with --outliers", options.alpha);
  }
  if (!options.outliers && options.start != StatsOptions().start) {
    throw Error("--start {}: it goes with --outliers", options.start);
  }
  const bool of_columns = distance_kinds == 0 && !options.plot.empty();
  const bool picture = of_columns && options.plot != "-";
  if (picture) expect_picture(options.plot, "--plot");
  StatsOptions wanted = options;
  wanted.histogram |= of_columns;
  orv_threads_set_count(options.threads);
  Report report = options.precision == "s" ? analyse<float>(wanted) : analyse<double>(wanted);
  if (picture) draw_columns(report, options.plot);
  for (ColumnReport& c : report.columns) {
    if (picture && !options.histogram) c.histogram = {};  // it is in the picture
  }
  print_report(report, options.format);
  if (!options.plot.empty() && report.plot) {
    if (options.plot == "-") write("\n", 1);
    distance_plot(report.plot->distances, report.plot->cutoff, report.plot->labels, options.plot);
  }
}

constexpr const char* footer =
    R"(
Without --select all columns of numbers are taken: those
whose first cell that is not missing, among the first 1000 rows, is a number.

Missing cells: with available (default) a column's figures are of all its values, and the table says
how many these are; matrices are of the rows without a missing cell. drop leaves out each row in
which a selected column has one, and tells how many; pairwise is as available, but takes for each
pair of columns the rows that have both; em adds mean, covariance and correlation of maximum
likelihood, from all cells there are, for normal data; fail stops at a missing cell. A text below numbers is a
missing cell, too, and a note tells where it stands.

Figures: count missing sum mean standard_error (se) mean_low mean_high (ci is both)
standard_deviation (sd) variance (var) minimum (min) quantiles median maximum (max) mode mode_count
skewness (skew) excess_kurtosis (kurtosis); all is all of them.

Definitions, for values x with weights w (1 without --weights; rows of weight 0 are passed over).
W is the sum of weights, W2 that of their squares, E the weighted mean:
  mean             m = E x
  covariance       sum of w (x - mx) (y - my), over W - W2 / W (without weights n - 1)
  std. deviation   square root of the variance c2 = covariance of a column with itself
  skewness         E (x - m)^3 / c2^1.5       c2 is the unbiased variance, the other moments
  excess kurtosis  E (x - m)^4 / c2^2 - 3     are those of the population
  quantile         of order q: at (n - 1) q in the sorted values, counted from 0, linear between
                   neighbours (definition 7 of Hyndman and Fan); with weights: the value at which
                   the sum of weights, in ascending order, reaches q W, linear between neighbours
  standard error   deviation / sqrt(W^2 / W2), without weights sqrt(n); the mean's interval is
                   that of Student's t with one degree of freedom less than that
  sum              of w x;  mode: the most frequent value of a column of whole numbers
  pooled           the groups' sums of products, over the sum of their W - W2 / W
  partial          covariance of Y given Z: Cyy - Cyz inv(Czz) Czy
  distance         of a row x from the mean m: root of (x - m)' inv(C) (x - m); the cut-off is
                   the root of the chi-square quantile 0.975, which 2.5 % of normal rows exceed;
                   probability: of normal rows, the part that is farther off
  outlier          a row whose distance from the other rows is beyond the root of the chi-square
                   quantile 1 - alpha / n, a little widened (Billor, Hadi and Velleman 2000)
  repaired         eigenvalues raised to 1e-14 (floats: 1e-6), scaled back to a unit diagonal
Means, variances and deviations are those of exact arithmetic, rounded once in nearly all cases; the
others come from updates about the mean. No digit depends on --threads.
What is not defined, such as the deviation of one value, is shown as -, in CSV as an empty cell,
in JSON as null. Infinities are inf and -inf, in JSON the strings "inf" and "-inf".

The file is read once, in blocks, and may be larger than memory. Quantiles, modes, histograms, --by,
--robust, --outliers and --mahalanobis need all values. Beyond --memory quantiles are told from a
summary of the values, with ranks that are off by 0.0001 of the count at most, and the others stop.
--eps has it so from the start.

CSV output: a table of the columns; histograms, groups and matrices follow, each after a blank line.
CSV and JSON have all digits.

Examples:
  orv stats iris.csv --by Species
  orv stats airquality.csv --figures count,mean,ci,median --histogram
  orv stats airquality.csv --missing pairwise --cor
  orv stats stackloss.csv --partial stack.loss,Air.Flow --given Water.Temp
  orv stats stackloss.csv --robust tbs --plot -
  orv stats hbk.csv --outliers --plot hbk.svg
  orv stats airquality.csv --missing pairwise --repair-correlation
  orv random uniform -n 1000000 | orv stats --quantiles 0.01,0.99)";

}  // namespace

void add_stats_command(CLI::App& app) {
  auto* command = app.add_subcommand("stats", "Summary statistics of the columns of a file");
  auto options = std::make_shared<StatsOptions>();
  options->memory = memory_by_default;
  const auto add = [&](const char* name, auto& value, const char* text, const char* help) {
    return command->add_option(name, value, help)->option_text(text);
  };
  const auto add_word = [&](const char* name, std::string& value, const char* text,
                            std::vector<std::string> words, const char* help) {
    add(name, value, text, help)->check(CLI::IsMember(std::move(words)));
  };
  add("FILE", options->input.files, " ", "Files to read; -, the default, is standard input");
  add_input_options(*command, options->input);
  add("-s,--select", options->select, "COLUMNS",
      "Only these columns, with commas between, and ranges: 1,3-5 or x:z");
  add("-x,--exclude", options->exclude, "COLUMNS", "Not these columns");
  command->add_flag("--cov", options->covariance, "Print the covariance matrix");
  command->add_flag("--cor", options->correlation, "Print the correlation matrix");
  add("-f,--figures", options->figures, "NAMES",
      "What to tell of each column, with commas between: see below, or all");
  add("-q,--quantiles", options->quantiles, "ORDERS",
      "Instead of quartiles those of orders such as 0.1,0.5,0.9");
  add("--confidence", options->confidence, "LEVEL", "Of the mean's interval (default 0.95)")
      ->check(CLI::Range(1e-6, 1 - 1e-6));
  command->add_flag("--histogram", options->histogram, "Print a histogram of each column, too");
  add("--bins", options->bins, "N", "Bins of the histogram, about (default: as many as suit)")
      ->check(CLI::Range(1, 1000));
  add("-w,--weights", options->weights, "COLUMN", "Weights of the rows, from 0");
  add("-b,--by", options->by, "COLUMNS",
      "Group the rows by what these columns hold, numbers or text: figures\n"
      "of the groups, and with --cov and --cor pooled matrices within them");
  add("--partial", options->partial, "COLUMNS",
      "Covariance and correlation of these columns, freed from the linear\n"
      "influence of those of --given");
  add("--given", options->given, "COLUMNS", "See --partial");
  add_word("--robust", options->robust, "METHOD", {"ogk", "tbs"},
           "Robust mean and covariance of the columns: ogk (orthogonalised pairs,\n"
           "fast) or tbs (translated biweight S-estimator, more efficient)");
  command->add_flag("--outliers", options->outliers,
                    "Outliers among the rows (BACON), and mean and deviation of the others");
  add("--alpha", options->alpha, "ALPHA",
      "Part of clean normal data in which --outliers finds any (default 0.05)");
  add_word("--start", options->start, "CENTRE", {"medians", "mean"},
           "The rows that --outliers begins with are near the medians (default)\n"
           "or near the mean, which outliers carry away");
  command->add_flag("--mahalanobis", options->mahalanobis,
                    "Print each row's Mahalanobis distance from the mean");
  command->add_flag("--repair-correlation", options->repair_correlation,
                    "Print the correlation matrix made positive definite, which that of\n"
                    "--missing pairwise may fail to be");
  command->add_flag("--distances", options->distances,
                    "Print each row's distance, with --robust and --outliers");
  add("--plot", options->plot, "FILE",
      "Draw a histogram and a box plot of each column by gnuplot, to a file .svg\n"
      "or .png, or - for histograms as text; with --robust, --outliers or\n"
      "--mahalanobis the distances and their cut-off line, to a file .svg or as\n"
      "text");
  add_word("--missing", options->missing, "WHAT", {"available", "drop", "pairwise", "em", "fail"},
           "What to do about missing cells: available (default), drop, pairwise,\n"
           "em or fail; see below");
  add("--eps", options->epsilon, "E",
      "Quantiles whose ranks are off by E of the count at most, such as 1e-4,\n"
      "without keeping the values")
      ->check([](const std::string& text) {
        double value;
        return parse(text, value) && value > 0 && value <= 1
                   ? std::string()
                   : in_quotes(text) + " is not above 0 and up to 1";
      });
  add_word("--format", options->format, "FORMAT", {"table", "markdown", "csv", "json", "jsonl"},
           "table (default), markdown, csv, json, or jsonl: a line each column");
  add_word("--precision", options->precision, "TYPE", {"d", "s"},
           "Compute in d doubles (default) or s floats; floats for less than\n"
           "16 million rows");
  add("--threads", options->threads, "N",
      "Threads to compute with (default: ORV_NUM_THREADS of the\n"
      "environment, else one a processor)")
      ->check(CLI::Range(1, 256));
  add("--memory", options->memory, "MIB",
      sizeof(void*) == 8 ? "Most that is kept of the values, in MiB (default 1024)"
                         : "Most that is kept of the values, in MiB (default 512)")
      ->check(CLI::Range(int64_t{0}, most_memory));
  command->footer(std::string(input_help) + footer);
  command->callback([options] { stats(*options); });
}

}  // namespace orv_cli
