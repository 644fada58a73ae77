// SPDX-License-Identifier: MIT
#include "distance_plot.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>
#include <set>
#include <utility>

#include "error.hpp"
#include "output.hpp"

namespace orv_cli {
namespace {

constexpr size_t most_named = 12;

/// Beyond this many times the line, a linear axis would press the other rows flat.
constexpr double far_beyond = 8;

/// From distances to the height in a picture, 0 to 1.
class Scale {
 public:
  Scale(const std::vector<double>& distances, double cutoff) {
    double least = cutoff, largest = cutoff;
    for (const double d : distances) {
      if (!std::isfinite(d)) continue;
      largest = std::max(largest, d);
      if (d > 0) least = std::min(least, d);
    }
    logarithmic_ = largest > far_beyond * cutoff;
    if (logarithmic_) {
      bottom_ = std::log10(std::max(least, 0.01 * cutoff));
      top_ = std::log10(largest) + 0.05 * (std::log10(largest) - bottom_);
    } else {
      top_ = largest > 0 ? 1.05 * largest : 1;
    }
  }

  double height(double distance) const {
    if (!std::isfinite(distance)) return 1;
    if (!logarithmic_) return distance / top_;
    return std::max(0.0, (std::log10(std::max(distance, 1e-300)) - bottom_) / (top_ - bottom_));
  }

  /// Round distances within the axis: steps of 1, 2 or 5, or on a logarithmic one 1, 2 and 5 in
  /// each power of ten, if there are few of them.
  std::vector<double> ticks() const {
    std::vector<double> result;
    if (!logarithmic_) {
      const double rough = top_ / 5, power = std::pow(10, std::floor(std::log10(rough)));
      const double step = power * (rough < 2 * power ? 2 : rough < 5 * power ? 5 : 10);
      for (int k = 0; k * step <= top_; ++k) result.push_back(k * step);
      return result;
    }
    const bool all = top_ - bottom_ < 3;
    for (int e = static_cast<int>(std::floor(bottom_)); e <= top_; ++e) {
      for (const double lead : {1, 2, 5}) {
        const double tick = lead * std::pow(10, e), at = std::log10(tick);
        if ((all || lead == 1) && at >= bottom_ && at <= top_) result.push_back(tick);
      }
    }
    return result;
  }

 private:
  bool logarithmic_ = false;
  double bottom_ = 0, top_ = 1;
};

/// The rows beyond the line, the farthest first, as many as are named.
std::vector<size_t> farthest(const std::vector<double>& distances, double cutoff) {
  std::vector<size_t> rows;
  for (size_t i = 0; i < distances.size(); ++i) {
    if (!(distances[i] <= cutoff)) rows.push_back(i);
  }
  const auto size = [&](size_t i) { return std::isnan(distances[i]) ? INFINITY : distances[i]; };
  std::ranges::stable_sort(rows, [&](size_t i, size_t j) { return size(i) > size(j); });
  if (rows.size() > most_named) rows.resize(most_named);
  return rows;
}

// ---- Characters ---------------------------------------------------------------------------------

std::string as_text(const std::vector<double>& distances, double cutoff,
                    const std::vector<std::string>& labels) {
  constexpr size_t most_columns = 64, lines = 17;
  const Scale scale(distances, cutoff);
  const size_t n = distances.size();
  const size_t columns = n < most_columns ? most_columns / n * n : most_columns;
  const auto line_of = [&](double d) {
    return static_cast<size_t>(std::lround((1 - scale.height(d)) * (lines - 1)));
  };
  std::vector<std::string> picture(lines, std::string(columns, ' '));
  picture[line_of(cutoff)].assign(columns, '-');
  for (size_t i = 0; i < n; ++i) {
    char& cell = picture[line_of(distances[i])][(2 * i + 1) * columns / (2 * n)];
    if (cell != '*') cell = distances[i] <= cutoff ? '.' : '*';
  }
  std::vector<std::string> axis(lines);
  for (const double tick : scale.ticks()) axis[line_of(tick)] = fmt::format("{:.4g}", tick);
  axis[line_of(cutoff)] = fmt::format("{:.4g}", cutoff);
  std::string text = "distance\n";
  for (size_t l = 0; l < lines; ++l) text += fmt::format("{:>8} |{}\n", axis[l], picture[l]);
  const std::string first = one_line(labels.front(), 24), last = one_line(labels.back(), 24);
  const size_t room = std::max(columns, first.size() + last.size() + 1) - first.size();
  text += fmt::format("{:>8} +{:-<{}}\n{:>8}  {}{:>{}}\n", "", "", columns, "row", first,
                      n > 1 ? last : "", room);
  return text + fmt::format("{:>8}  -- cut-off {:.4g}, * beyond it\n", "", cutoff);
}

// ---- SVG ----------------------------------------------------------------------------------------

constexpr double width = 800, height = 400, left = 62, right = 24, top = 18, bottom = 46;

std::string escaped(const std::string& text) {
  std::string result;
  for (const char c : one_line(text, 24)) {
    switch (c) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      default:
        result += c;
    }
  }
  return result;
}

class Picture {
 public:
  Picture(const std::vector<double>& distances, double cutoff)
      : distances_(distances), cutoff_(cutoff), scale_(distances, cutoff) {}

  std::string draw(const std::vector<std::string>& labels) {
    add(R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {} {}" font-family="sans-serif" )"
        R"(font-size="12" fill="#333">)",
        width, height);
    add(R"(<rect width="{}" height="{}" fill="#fff"/>)", width, height);
    draw_axes(labels);
    draw_rows(false, "#4477aa");
    add(R"(<path d="M{} {:.1f}H{}" stroke="#cc3311" stroke-dasharray="6 4"/>)", left, y(cutoff_),
        width - right);
    add(R"(<text x="{}" y="{:.1f}" text-anchor="end" fill="#cc3311">cut-off {:.4g}</text>)",
        width - right - 4, y(cutoff_) - 5, cutoff_);
    draw_rows(true, "#cc3311");
    draw_names(labels);
    add("</svg>");
    return std::move(text_);
  }

 private:
  template <class... Args>
  void add(fmt::format_string<Args...> format, Args&&... args) {
    fmt::format_to(std::back_inserter(text_), format, std::forward<Args>(args)...);
    text_ += '\n';
  }

  double x(size_t row) const {
    const auto n = static_cast<double>(distances_.size());
    return left + (static_cast<double>(row) + 0.5) / n * (width - left - right);
  }
  double y(double distance) const {
    return height - bottom - scale_.height(distance) * (height - top - bottom);
  }

  void draw_axes(const std::vector<std::string>& labels) {
    for (const double tick : scale_.ticks()) {
      add(R"(<path d="M{} {:.1f}H{}" stroke="#ddd"/>)", left, y(tick), width - right);
      add(R"(<text x="{}" y="{:.1f}" text-anchor="end">{:.4g}</text>)", left - 6, y(tick) + 4,
          tick);
    }
    add(R"(<path d="M{} {}V{}H{}" fill="none" stroke="#333"/>)", left, top, height - bottom,
        width - right);
    const size_t n = distances_.size();
    const std::set<size_t> marked = {1, (n + 2) / 4, (n + 1) / 2, (3 * n + 2) / 4, n};
    for (const size_t row : marked) {
      if (row == 0) continue;
      add(R"(<text x="{:.1f}" y="{}" text-anchor="middle">{}</text>)", x(row - 1),
          height - bottom + 17, escaped(labels[row - 1]));
    }
    add(R"(<text x="{}" y="{}" text-anchor="middle">row</text>)", (left + width - right) / 2,
        height - 10);
    add(R"svg(<text transform="translate(16 {}) rotate(-90)" text-anchor="middle">distance</text>)svg",
        (top + height - bottom) / 2);
  }

  /// Points that fall on each other are drawn once, which bounds the size of the picture.
  void draw_rows(bool beyond, const char* colour) {
    std::set<std::pair<int, int>> drawn;
    add(R"(<g fill="{}">)", colour);
    for (size_t i = 0; i < distances_.size(); ++i) {
      if (!(distances_[i] <= cutoff_) != beyond) continue;
      const double at_x = x(i), at_y = y(distances_[i]);
      if (!drawn.emplace(static_cast<int>(at_x), static_cast<int>(at_y)).second) continue;
      add(R"(<circle cx="{:.1f}" cy="{:.1f}" r="2.5"/>)", at_x, at_y);
    }
    add("</g>");
  }

  /// Where a name would cover another, it is left out.
  void draw_names(const std::vector<std::string>& labels) {
    struct Name {
      double x, y, width;
    };
    std::vector<Name> placed;
    for (const size_t i : farthest(distances_, cutoff_)) {
      const std::string text = escaped(labels[i]);
      const double above = y(distances_[i]) - 6;
      const Name name = {x(i), above > 12 ? above : above + 20,
                         7 * static_cast<double>(text.size()) + 6};
      const bool covers = std::ranges::any_of(placed, [&](const Name& other) {
        return std::fabs(other.x - name.x) < (other.width + name.width) / 2 &&
               std::fabs(other.y - name.y) < 12;
      });
      if (covers) continue;
      placed.push_back(name);
      add(R"(<text x="{:.1f}" y="{:.1f}" text-anchor="middle">{}</text>)", name.x, name.y, text);
    }
  }

  const std::vector<double>& distances_;
  double cutoff_;
  Scale scale_;
  std::string text_;
};

}  // namespace

void distance_plot(const std::vector<double>& distances, double cutoff,
                   const std::vector<std::string>& labels, const std::string& file) {
  if (file == "-") {
    const std::string text = as_text(distances, cutoff, labels);
    return write(text.data(), text.size());
  }
  const std::string picture = Picture(distances, cutoff).draw(labels);
  std::ofstream stream(file, std::ios::binary);
  stream << picture;
  stream.close();
  if (!stream) throw Error("--plot {}: {}", in_quotes(file), std::strerror(errno));
}

}  // namespace orv_cli
