// SPDX-License-Identifier: MIT
#include "stats_report.hpp"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <nlohmann/json.hpp>
#include <span>

#include "csv.hpp"
#include "error.hpp"
#include "output.hpp"

namespace orv_cli {
namespace {

using Strings = std::vector<std::string>;

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

void append_panels(std::string& text, const Grid& grid) {
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

std::string markdown_cell(const std::string& text) {
  std::string cell;
  for (const char c : text) (cell += c == '|' ? "\\" : "") += c;
  return cell;
}

void append_markdown(std::string& text, const Grid& grid) {
  const auto append_line = [&](const std::string& label, auto cell) {
    text += fmt::format("| {} |", markdown_cell(label));
    for (size_t j = 0; j < grid.heads.size(); ++j)
      text += fmt::format(" {} |", markdown_cell(cell(j)));
    text += '\n';
  };
  append_line(grid.corner, [&](size_t j) { return grid.heads[j]; });
  text += "|---|";
  for (size_t j = 0; j < grid.heads.size(); ++j) text += "---:|";
  text += '\n';
  for (size_t i = 0; i < grid.labels.size(); ++i) {
    append_line(grid.labels[i], [&](size_t j) { return grid.cells[j][i]; });
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

std::string figure_text(const Figure& figure, double value, const ColumnFormat& in_unit) {
  if (figure.unit == Unit::column) return in_unit(value);
  if (figure.unit == Unit::ratio) return ratio_text(value);
  if (std::isnan(value)) return "-";
  return figure.unit == Unit::count ? fmt::format("{:.0f}", value) : fmt::format("{:.6g}", value);
}

Grid summary_grid(const Report& report) {
  Grid grid;
  for (const Figure& figure : report.figures) grid.labels.push_back(figure.label);
  for (const ColumnReport& c : report.columns) {
    const ColumnFormat text(c);
    Strings& cells = grid.cells.emplace_back();
    for (const Figure& f : report.figures) cells.push_back(figure_text(f, f.value(c), text));
    grid.heads.push_back(label_text(c.name));
  }
  return grid;
}

/// A row for each group, with the figures of one column.
Grid group_grid(const Report& report, size_t column) {
  const GroupReport& groups = *report.groups;
  const ColumnFormat text(report.columns[column]);
  Grid grid = {label_text(fmt::format("{}", fmt::join(groups.by, ", "))), {}, {}, {}};
  for (const Strings& labels : groups.labels) {
    grid.labels.push_back(label_text(fmt::format("{}", fmt::join(labels, ", "))));
  }
  for (size_t k = 0; k < groups.figures.size(); ++k) {
    const Figure& figure = groups.figures[k];
    Strings& cells = grid.cells.emplace_back();
    for (size_t g = 0; g < groups.labels.size(); ++g) {
      cells.push_back(figure_text(figure, groups.of(g, column)[k], text));
    }
    grid.heads.push_back(figure.label);
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
  if (report.complete && *report.complete < report.rows - report.dropped - report.weightless) {
    text += fmt::format("; matrices: {} rows without a missing cell", *report.complete);
  }
  if (report.weights) {
    text += fmt::format("; weights: {}, sum {:.10g}", one_line(*report.weights), report.weight_sum);
  }
  return text;
}

std::string as_table(const Report& report, bool markdown) {
  std::string text = rows_text(report) + "\n\n";
  const auto append = [&](const Grid& grid) {
    markdown ? append_markdown(text, grid) : append_panels(text, grid);
  };
  const bool bold = !markdown && may_colour(STDOUT_FILENO);
  const auto append_title = [&](const std::string& plain) {
    const std::string title = bold ? fmt::format("\033[1m{}\033[0m", plain) : plain;
    text += markdown ? fmt::format("\n{}\n\n", title) : fmt::format("\n{}\n", title);
  };
  append(summary_grid(report));
  for (const ColumnReport& c : report.columns) {
    if (c.histogram.counts.empty()) continue;
    append_title("Histogram of " + one_line(c.name));
    constexpr size_t beside_bar = 40;
    const std::string bars = text_of(c.histogram, screen_width() - beside_bar);
    text += markdown ? "```\n" + bars + "```\n" : bars;
  }
  for (size_t j = 0; report.groups && j < report.columns.size(); ++j) {
    append_title(fmt::format("{} by {}", one_line(report.columns[j].name),
                             one_line(fmt::format("{}", fmt::join(report.groups->by, ", ")))));
    append(group_grid(report, j));
  }
  for (const MatrixReport& matrix : report.matrices) {
    append_title(one_line(matrix.title));
    append(matrix_grid(matrix));
    if (!matrix.note.empty()) text += matrix.note + '\n';
  }
  return text;
}

// ---- CSV ----------------------------------------------------------------------------------------

/// What is not defined is left empty.
void append_number(fmt::memory_buffer& text, double x, bool single) {
  if (std::isnan(x)) return;
  if (single) {
    fmt::format_to(std::back_inserter(text), "{}", static_cast<float>(x));
  } else {
    fmt::format_to(std::back_inserter(text), "{}", x);
  }
}

/// A line of text and numbers.
void append_line(fmt::memory_buffer& text, const Strings& texts, std::span<const double> numbers,
                 bool single) {
  bool first = true;
  const auto append_comma = [&] {
    if (!first) text.push_back(',');
    first = false;
  };
  for (const std::string& cell : texts) {
    append_comma();
    text.append(csv_cell(cell));
  }
  for (const double x : numbers) {
    append_comma();
    append_number(text, x, single);
  }
  text.push_back('\n');
}

void append_figure_names(Strings& heads, const std::vector<Figure>& figures) {
  for (const Figure& figure : figures) heads.push_back(figure.name);
}

void append_groups(fmt::memory_buffer& text, const Report& report) {
  const GroupReport& groups = *report.groups;
  text.push_back('\n');
  Strings heads = groups.by;
  heads.push_back("column");
  append_figure_names(heads, groups.figures);
  append_line(text, heads, {}, false);
  for (size_t g = 0; g < groups.labels.size(); ++g) {
    Strings texts = groups.labels[g];
    texts.emplace_back();
    for (size_t j = 0; j < report.columns.size(); ++j) {
      texts.back() = report.columns[j].name;
      append_line(text, texts, {groups.of(g, j), groups.figures.size()}, report.single);
    }
  }
}

void append_matrix(fmt::memory_buffer& text, const MatrixReport& matrix, bool single) {
  text.push_back('\n');
  Strings heads = {matrix.title};
  heads.insert(heads.end(), matrix.heads().begin(), matrix.heads().end());
  append_line(text, heads, {}, false);
  const size_t p = matrix.heads().size();
  for (size_t i = 0; i < matrix.names.size(); ++i) {
    append_line(text, {matrix.names[i]}, std::span(matrix.values).subspan(i * p, p), single);
  }
}

std::string as_csv(const Report& report) {
  fmt::memory_buffer text;
  Strings heads = {"column"};
  append_figure_names(heads, report.figures);
  append_line(text, heads, {}, false);
  for (const ColumnReport& c : report.columns) {
    std::vector<double> values;
    for (const Figure& figure : report.figures) values.push_back(figure.value(c));
    append_line(text, {c.name}, values, report.single);
  }
  const bool histograms = std::ranges::any_of(
      report.columns, [](const ColumnReport& c) { return !c.histogram.counts.empty(); });
  if (histograms) text.append(std::string_view("\nhistogram of,from,to,count\n"));
  for (const ColumnReport& c : report.columns) {
    for (size_t bin = 0; bin < c.histogram.counts.size(); ++bin) {
      const double numbers[] = {c.histogram.first(bin), c.histogram.last(bin),
                                static_cast<double>(c.histogram.counts[bin])};
      append_line(text, {c.name}, numbers, false);
    }
  }
  if (report.groups) append_groups(text, report);
  for (const MatrixReport& matrix : report.matrices) append_matrix(text, matrix, report.single);
  return fmt::to_string(text);
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

/// Adds figures, quantiles as one list of orders and values; `value` tells that of a figure.
template <class Value>
void add_figures(Json& json, const std::vector<Figure>& figures, bool single, Value value) {
  for (const Figure& figure : figures) {
    const double x = value(figure);
    if (figure.of == nullptr) {
      const double order = std::strtod(figure.name.c_str() + 1, nullptr);  // after a q
      json["quantiles"].push_back({{"order", order}, {"value", json_number(x, single)}});
    } else if (figure.unit == Unit::count && !std::isnan(x)) {
      json[figure.name] = static_cast<int64_t>(x);
    } else {
      json[figure.name] = json_number(x, single);
    }
  }
}

Json json_of(const ColumnReport& c, const Report& report) {
  Json json = {{"name", c.name}};
  add_figures(json, report.figures, report.single, [&](const Figure& f) { return f.value(c); });
  for (size_t bin = 0; bin < c.histogram.counts.size(); ++bin) {
    json["histogram"].push_back({{"from", c.histogram.first(bin)},
                                 {"to", c.histogram.last(bin)},
                                 {"count", c.histogram.counts[bin]}});
  }
  return json;
}

Json json_of_group(const Report& report, size_t group, size_t column) {
  const GroupReport& groups = *report.groups;
  Json json = {{"name", report.columns[column].name}, {"by", Json::object()}};
  for (size_t k = 0; k < groups.by.size(); ++k) json["by"][groups.by[k]] = groups.labels[group][k];
  const double* next = groups.of(group, column);
  add_figures(json, groups.figures, report.single, [&](const Figure&) { return *next++; });
  return json;
}

Json json_of(const MatrixReport& matrix, bool single) {
  Json json = {{"title", matrix.title}, {"names", matrix.names}};
  if (!matrix.columns.empty()) json["columns"] = matrix.columns;
  json["values"] = json_rows(matrix.values, matrix.names.size(), single);
  if (!matrix.note.empty()) json["note"] = matrix.note;
  return json;
}

/// Calls use("columns" or so, record) for each column, group and matrix.
template <class Use>
void for_each_record(const Report& report, Use use) {
  for (const ColumnReport& c : report.columns) use("columns", json_of(c, report));
  for (size_t g = 0; report.groups && g < report.groups->labels.size(); ++g) {
    for (size_t j = 0; j < report.columns.size(); ++j) use("groups", json_of_group(report, g, j));
  }
  for (const MatrixReport& m : report.matrices) use("matrices", json_of(m, report.single));
}

std::string as_json(const Report& report) {
  Json json = {{"file", report.file}, {"rows", report.rows}, {"dropped", report.dropped}};
  if (report.complete) json["complete_rows"] = *report.complete;
  if (report.weights) {
    json["weights"] = {{"column", *report.weights},
                       {"sum", json_number(report.weight_sum, report.single)},
                       {"zero", report.weightless}};
  }
  for_each_record(report,
                  [&](const char* list, Json record) { json[list].push_back(std::move(record)); });
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

/// A line for each record.
std::string as_json_lines(const Report& report) {
  std::string text;
  for_each_record(report, [&](const char*, const Json& record) {
    text += record.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
  });
  return text;
}

}  // namespace

void print_report(const Report& report, const std::string& format) {
  const std::string text = format == "json"    ? as_json(report)
                           : format == "jsonl" ? as_json_lines(report)
                           : format == "csv"   ? as_csv(report)
                                               : as_table(report, format == "markdown");
  write(text.data(), text.size());
  for (const std::string& note : report.notes) fmt::print(stderr, "orv: note: {}\n", note);
  for (const MatrixReport& matrix : report.matrices) {
    if (format == "csv" && !matrix.note.empty()) fmt::print(stderr, "orv: note: {}\n", matrix.note);
  }
  if ((format == "csv" || format == "jsonl") && report.dropped + report.weightless > 0) {
    fmt::print(stderr, "orv: note: {}\n", rows_text(report));
  }
}

}  // namespace orv_cli
