// SPDX-License-Identifier: MIT
#include "stats_picture.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>

#include "output.hpp"
#include "picture.hpp"

namespace orv_cli {
namespace {

constexpr size_t across = 2;  // panels beside each other

double quantile(const Report& report, const ColumnReport& c, const char* name) {
  const auto figure = std::ranges::find(report.figures, name, &Figure::name);
  return figure == report.figures.end() ? NAN : figure->value(c);
}

std::string box_over(const Report& report, const ColumnReport& c, double most) {
  const double first = quantile(report, c, "q0.25"), median = quantile(report, c, "q0.5"),
               third = quantile(report, c, "q0.75");
  if (!std::isfinite(first + median + third + c.minimum + c.maximum)) return "";
  const double low = 1.08 * most, high = 1.16 * most, middle = 1.12 * most;
  return fmt::format(
      "set object 1 rect from {0},{4} to {2},{5} fs empty border -1\n"
      "set arrow 1 from {1},{4} to {1},{5} nohead lw 2\n"
      "set arrow 2 from {6},{8} to {0},{8} nohead\nset arrow 3 from {2},{8} to {7},{8} nohead\n"
      "set label 1 '' at {3},{8} point pt 7 ps 0.5\n",
      first, median, third, c.mean, low, high, c.minimum, c.maximum, middle);
}

std::string panel(const Report& report, const ColumnReport& c) {
  const Histogram& h = c.histogram;
  const auto most = static_cast<double>(std::ranges::max(h.counts));
  std::string text = fmt::format(
      "unset object\nunset arrow\nunset label\nset title {}\nset yrange [0:{}]\nset xrange "
      "[{}:{}]\n"
      "set ylabel 'rows'\n{}$counts << end\n",
      picture_text(c.name), 1.22 * most, h.edge(0) - h.width / 2,
      h.edge(h.counts.size()) + h.width / 2, box_over(report, c, most));
  for (size_t bin = 0; bin < h.counts.size(); ++bin) {
    text += fmt::format("{} {}\n", h.edge(bin) + h.width / 2, h.counts[bin]);
  }
  return text + fmt::format("end\nplot $counts using 1:2:({}) with boxes\n", h.width);
}

}  // namespace

void draw_columns(const Report& report, const std::string& path) {
  std::string script;
  size_t panels = 0;
  for (const ColumnReport& c : report.columns) {
    if (c.histogram.counts.empty()) continue;
    script += panel(report, c);
    ++panels;
  }
  const size_t rows = (panels + across - 1) / across;
  draw_picture(path, "--plot", 900, static_cast<int>(std::max<size_t>(1, rows) * 300),
               fmt::format("set multiplot layout {},{}\n{}unset multiplot",
                           std::max<size_t>(1, rows), across, script));
}

}  // namespace orv_cli
