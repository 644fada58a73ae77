#include "stats_report.hpp"

#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <nlohmann/json.hpp>

#include "error.hpp"
#include "output.hpp"

namespace orv_cli {
namespace {

using Strings = std::vector<std::string>;

/// "25%"
std::string percent(double order) { return fmt::format("{:.6g}%", 100 * order); }

/// Shortest text that reads back as the number that was computed.
std::string exact_text(double value, bool single) {
  return single ? fmt::format("{}", static_cast<float>(value)) : fmt::format("{}", value);
}

// ---- Table --------------------------------------------------------------------------------------

/// Right-aligned columns under heads, in panels that fit the screen.
struct Grid {
  std::string corner;
  Strings labels;              // of the rows
  Strings heads;               // of the columns
  std::vector<Strings> cells;  // column by column
};

size_t width_of(const std::string& text) {
  return static_cast<size_t>(
      std::ranges::count_if(text, [](char c) { return (c & 0xC0) != 0x80; }));  // of UTF-8
}

size_t width_of(const Strings& texts) {
  size_t width = 0;
  for (const std::string& text : texts) width = std::max(width, width_of(text));
  return width;
}

size_t screen_width() {
  winsize size = {};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col >= 40) return size.ws_col;
  return 100;
}

std::string padded(const std::string& text, size_t width, bool right) {
  const std::string blanks(width - std::min(width, width_of(text)), ' ');
  return right ? blanks + text : text + blanks;
}

void append(std::string& text, const Grid& grid) {
  const size_t label_width = std::max(width_of(grid.labels), width_of(grid.corner));
  const size_t screen = screen_width();
  for (size_t first = 0, last; first < grid.heads.size(); first = last) {
    std::vector<size_t> widths;
    size_t width = label_width;
    for (last = first; last < grid.heads.size(); ++last) {
      const size_t next = std::max(width_of(grid.heads[last]), width_of(grid.cells[last])) + 2;
      if (last > first && width + next > screen) break;
      widths.push_back(next);
      width += next;
    }
    const auto append_line = [&](const std::string& label, auto cell) {
      text += padded(label, label_width, false);
      for (size_t j = first; j < last; ++j) text += padded(cell(j), widths[j - first], true);
      text += '\n';
    };
    if (first > 0) text += '\n';
    append_line(grid.corner, [&](size_t j) { return grid.heads[j]; });
    for (size_t i = 0; i < grid.labels.size(); ++i) {
      append_line(grid.labels[i], [&](size_t j) { return grid.cells[j][i]; });
    }
  }
}

/// Numbers in the unit of a column: with as many decimals as show five digits of its deviation, and
/// so the more of them, the closer together the values are.
class ColumnFormat {
 public:
  explicit ColumnFormat(const ColumnReport& c) {
    const double largest = std::max(std::fabs(c.minimum), std::fabs(c.maximum));
    if (!std::isfinite(largest) || !(c.standard_deviation > 0)) return;
    const double decimals = std::max(0.0, 4 - std::floor(std::log10(c.standard_deviation)));
    const double digits = decimals + std::max(0.0, std::log10(largest) + 1);
    if (digits <= 17) decimals_ = static_cast<int>(decimals);
  }

  std::string operator()(double value) const {
    if (std::isnan(value)) return "-";
    return decimals_ < 0 ? fmt::format("{:.6g}", value) : fmt::format("{:.{}f}", value, decimals_);
  }

 private:
  int decimals_ = -1;  // none would fit: six digits
};

/// A number without a unit.
std::string ratio_text(double value) {
  if (std::isnan(value)) return "-";
  if (std::fabs(value) < 0.00005) value = 0;  // and not -0.0000
  return std::fabs(value) < 1e6 ? fmt::format("{:.4f}", value) : fmt::format("{:.4g}", value);
}

std::string label_text(const std::string& name) { return one_line(name, 24); }

Strings label_texts(const Strings& names) {
  Strings texts;
  std::ranges::transform(names, std::back_inserter(texts), label_text);
  return texts;
}

Grid summary_grid(const Report& report) {
  Grid grid = {"", {"count", "missing", "mean", "std. deviation", "minimum"}, {}, {}};
  for (const double order : report.orders) grid.labels.push_back(percent(order));
  for (const char* label : {"maximum", "skewness", "excess kurtosis"}) grid.labels.push_back(label);
  for (const ColumnReport& c : report.columns) {
    const ColumnFormat text(c);
    Strings cells = {fmt::format("{}", c.count), fmt::format("{}", c.missing), text(c.mean),
                     text(c.standard_deviation), text(c.minimum)};
    std::ranges::transform(c.quantiles, std::back_inserter(cells), text);
    for (std::string cell : {text(c.maximum), ratio_text(c.skewness), ratio_text(c.kurtosis)}) {
      cells.push_back(std::move(cell));
    }
    grid.heads.push_back(label_text(c.name));
    grid.cells.push_back(std::move(cells));
  }
  return grid;
}

Grid group_grid(const Report& report) {
  const GroupReport& groups = *report.groups;
  Grid grid = {label_text(groups.by), label_texts(groups.labels), {"count"}, {{}}};
  for (const int64_t count : groups.results.counts) {
    grid.cells[0].push_back(fmt::format("{}", count));
  }
  const size_t p = report.columns.size();
  for (size_t j = 0; j < p; ++j) {
    const ColumnFormat text(report.columns[j]);
    Strings means;
    for (size_t g = 0; g < groups.labels.size(); ++g) {
      means.push_back(text(groups.results.means[g * p + j]));
    }
    grid.heads.push_back(label_text(report.columns[j].name));
    grid.cells.push_back(std::move(means));
  }
  return grid;
}

Grid matrix_grid(const MatrixReport& matrix) {
  const bool correlation = matrix.title.find("orrelation") != std::string::npos;
  Grid grid = {"", label_texts(matrix.names), label_texts(matrix.heads()), {}};
  const size_t p = grid.heads.size();
  for (size_t j = 0; j < p; ++j) {
    Strings& cells = grid.cells.emplace_back();
    for (size_t i = 0; i < grid.labels.size(); ++i) {
      const double value = matrix.values[i * p + j];
      cells.push_back(correlation || std::isnan(value) ? ratio_text(value)
                                                       : fmt::format("{:.6g}", value));
    }
  }
  return grid;
}

std::string rows_text(const Report& report) {
  std::string text = fmt::format("{}: {} rows", one_line(report.file), report.rows);
  if (report.dropped > 0) text += fmt::format(", {} dropped: a cell is missing", report.dropped);
  if (report.weightless > 0) text += fmt::format(", {} passed over: weight 0", report.weightless);
  if (report.weights) {
    text += fmt::format("; weights: {}, sum {:.10g}", one_line(*report.weights), report.weight_sum);
  }
  return text;
}

std::string as_table(const Report& report) {
  std::string text = rows_text(report) + "\n\n";
  append(text, summary_grid(report));
  if (report.groups) {
    text += fmt::format("\nMeans by {}\n", one_line(report.groups->by));
    append(text, group_grid(report));
  }
  for (const MatrixReport& matrix : report.matrices) {
    text += fmt::format("\n{}\n", one_line(matrix.title));
    append(text, matrix_grid(matrix));
    if (!matrix.note.empty()) text += matrix.note + '\n';
  }
  return text;
}

// ---- CSV ----------------------------------------------------------------------------------------

std::string csv_cell(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string cell = "\"";
  for (const char c : text) cell += c == '"' ? "\"\"" : std::string(1, c);
  return cell + '"';
}

/// A line of text and numbers; what is not defined is left empty.
std::string csv_line(const Strings& texts, const std::vector<double>& numbers, bool single) {
  std::string line;
  for (size_t i = 0; i < texts.size(); ++i) {
    if (i > 0) line += ',';
    line += csv_cell(texts[i]);
  }
  for (const double x : numbers) {
    line += ',';
    if (!std::isnan(x)) line += exact_text(x, single);
  }
  return line + '\n';
}

std::string as_csv(const Report& report) {
  Strings head = {"column", "count", "missing", "mean", "standard_deviation", "minimum"};
  for (const double order : report.orders) head.push_back(fmt::format("q{}", order));
  for (const char* name : {"maximum", "skewness", "excess_kurtosis"}) head.push_back(name);
  std::string text = csv_line(head, {}, false);
  for (const ColumnReport& c : report.columns) {
    std::vector<double> numbers = {c.mean, c.standard_deviation, c.minimum};
    numbers.insert(numbers.end(), c.quantiles.begin(), c.quantiles.end());
    for (const double x : {c.maximum, c.skewness, c.kurtosis}) numbers.push_back(x);
    text += csv_line({c.name, fmt::format("{}", c.count), fmt::format("{}", c.missing)}, numbers,
                     report.single);
  }
  const auto append_rows = [&](const Strings& heads, const std::vector<Strings>& labels,
                               const std::vector<double>& values) {
    text += '\n';
    text += csv_line(heads, {}, false);
    const size_t p = values.size() / labels.size();
    for (size_t i = 0; i < labels.size(); ++i) {
      const double* const row = values.data() + i * p;
      text += csv_line(labels[i], {row, row + p}, report.single);
    }
  };
  if (report.groups) {
    Strings heads = {"mean by " + report.groups->by, "count"};
    for (const ColumnReport& c : report.columns) heads.push_back(c.name);
    std::vector<Strings> labels;
    for (size_t g = 0; g < report.groups->labels.size(); ++g) {
      labels.push_back(
          {report.groups->labels[g], fmt::format("{}", report.groups->results.counts[g])});
    }
    append_rows(heads, labels, report.groups->results.means);
  }
  for (const MatrixReport& matrix : report.matrices) {
    Strings heads = {matrix.title};
    heads.insert(heads.end(), matrix.heads().begin(), matrix.heads().end());
    std::vector<Strings> labels;
    for (const std::string& name : matrix.names) labels.push_back({name});
    append_rows(heads, labels, matrix.values);
  }
  return text;
}

// ---- JSON ---------------------------------------------------------------------------------------

using Json = nlohmann::ordered_json;

/// What is not defined becomes null; JSON has no infinities either, they become strings. A float is
/// printed with its own digits, not with a double's.
Json json_number(double value, bool single) {
  if (std::isnan(value)) return nullptr;
  if (std::isinf(value)) return exact_text(value, single);
  return single ? std::strtod(exact_text(value, true).c_str(), nullptr) : value;
}

Json json_rows(const std::vector<double>& values, size_t rows, bool single) {
  Json result = Json::array();
  const size_t p = values.size() / rows;
  for (size_t i = 0; i < rows; ++i) {
    Json& row = result.emplace_back(Json::array());
    for (size_t j = 0; j < p; ++j) row.push_back(json_number(values[i * p + j], single));
  }
  return result;
}

std::string as_json(const Report& report) {
  const bool single = report.single;
  Json json = {{"file", report.file}, {"rows", report.rows}, {"dropped", report.dropped}};
  if (report.weights) {
    json["weights"] = {{"column", *report.weights},
                       {"sum", json_number(report.weight_sum, single)},
                       {"zero", report.weightless}};
  }
  for (const ColumnReport& c : report.columns) {
    Json quantiles = Json::array();
    for (size_t i = 0; i < report.orders.size(); ++i) {
      quantiles.push_back(
          {{"order", report.orders[i]}, {"value", json_number(c.quantiles[i], single)}});
    }
    json["columns"].push_back({{"name", c.name},
                               {"count", c.count},
                               {"missing", c.missing},
                               {"mean", json_number(c.mean, single)},
                               {"standard_deviation", json_number(c.standard_deviation, single)},
                               {"minimum", json_number(c.minimum, single)},
                               {"quantiles", quantiles},
                               {"maximum", json_number(c.maximum, single)},
                               {"skewness", json_number(c.skewness, single)},
                               {"excess_kurtosis", json_number(c.kurtosis, single)}});
  }
  if (report.groups) {
    const GroupReport& groups = *report.groups;
    json["groups"] = {{"by", groups.by},
                      {"labels", groups.labels},
                      {"counts", groups.results.counts},
                      {"means", json_rows(groups.results.means, groups.labels.size(), single)}};
  }
  for (const MatrixReport& matrix : report.matrices) {
    Json& entry = json["matrices"].emplace_back();
    entry = {{"title", matrix.title}, {"names", matrix.names}};
    if (!matrix.columns.empty()) entry["columns"] = matrix.columns;
    entry["values"] = json_rows(matrix.values, matrix.names.size(), single);
    if (!matrix.note.empty()) entry["note"] = matrix.note;
  }
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace

void print_report(const Report& report, const std::string& format) {
  const std::string text = format == "json"  ? as_json(report)
                           : format == "csv" ? as_csv(report)
                                             : as_table(report);
  write(text.data(), text.size());
  for (const std::string& note : report.notes) fmt::print(stderr, "orv: note: {}\n", note);
  for (const MatrixReport& matrix : report.matrices) {
    if (format == "csv" && !matrix.note.empty()) fmt::print(stderr, "orv: note: {}\n", matrix.note);
  }
  if (format == "csv" && report.dropped + report.weightless > 0) {
    fmt::print(stderr, "orv: note: {}\n", rows_text(report));
  }
}

}  // namespace orv_cli
