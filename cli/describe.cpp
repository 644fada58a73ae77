// SPDX-License-Identifier: MIT
#include "describe.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace orv_cli {
namespace {

constexpr double outer = 0.01;  // probability on either side of the histogram
constexpr int bar_width = 40;

std::string number_or_dash(std::optional<double> x) { return x ? fmt::format("{:.6g}", *x) : "-"; }

}  // namespace

double Description::edge(int i) const {
  const double x = low_ + (high_ - low_) * i / bins_;
  return std::abs(x) < 1e-9 * (high_ - low_) ? 0 : x;
}

/// Bins of whole numbers end halfway between two, and all have as many of them.
Description::Description(const Law& law)
    : law_(law), low_(law.quantile(outer)), high_(law.quantile(1 - outer)) {
  if (!law.whole) return;
  const double count = high_ - low_ + 1, width = std::ceil(count / most_bins);
  bins_ = static_cast<int>(std::ceil(count / width));
  low_ -= 0.5;
  high_ = low_ + bins_ * width;
}

void Description::add(double x) {
  const double distance = x - (low_ + high_) / 2;
  sum_.add(distance);
  squares_.add(static_cast<long double>(distance) * distance);
  ++n_;
  smallest_ = std::min(smallest_, x);
  largest_ = std::max(largest_, x);
  const double bin = std::floor((x - low_) / (high_ - low_) * bins_) + 1;
  ++counts_[static_cast<size_t>(std::clamp(bin, 0.0, bins_ + 1.0))];
}

double Description::law_share(int bin) const {
  const double below = bin == 0 ? 0 : law_.cdf(edge(bin - 1));
  return (bin == bins_ + 1 ? 1 : law_.cdf(edge(bin))) - below;
}

/// The drawn share as a bar, and the law's as a mark in it.
std::string Description::row(int bin, double widest) const {
  const double drawn = static_cast<double>(counts_[bin]) / static_cast<double>(n_);
  const double law = law_share(bin);
  const auto length = [&](double share) {
    return static_cast<size_t>(std::lround(std::min(share / widest, 1.1) * bar_width));
  };
  std::string bar(length(drawn), '#');
  bar.resize(std::max(bar.size(), length(law) + 1), ' ');
  bar[length(law)] = '|';
  const double inward = law_.whole ? 0.5 : 0;
  const auto text_of = [&](double x) {
    return fmt::format(fmt::runtime(law_.whole ? "{:.10g}" : "{:.5g}"), x);
  };
  const std::string from = bin == 0 ? "" : text_of(edge(bin - 1) + inward);
  const std::string to = bin == bins_ + 1 ? "" : text_of(edge(bin) - inward);
  return fmt::format("{:>12} {:>12} {:>8.3f} {:>8.3f}  {}\n", from, to, 100 * drawn, 100 * law,
                     bar);
}

std::string Description::text() const {
  if (n_ == 0) return "no numbers\n";
  const long double n = static_cast<long double>(n_), mean = sum_.value() / n;
  const long double variance = n_ > 1 ? (squares_.value() - n * mean * mean) / (n - 1) : 0;
  const auto sample_mean = static_cast<double>(mean + (low_ + high_) / 2);
  const auto deviation = static_cast<double>(std::sqrt(std::max(variance, 0.0L)));
  std::string text = fmt::format("{:<10} {:>14} {:>14}\n", "", "drawn", "law");
  const auto line = [&](const char* name, double drawn, std::optional<double> law) {
    text += fmt::format("{:<10} {:>14.6g} {:>14}\n", name, drawn, number_or_dash(law));
  };
  text += fmt::format("{:<10} {:>14}\n", "numbers", n_);
  line("mean", sample_mean, law_.mean);
  line("deviation", deviation, law_.deviation);
  line("smallest", smallest_, law_.quantile(0));
  line("largest", largest_, law_.quantile(1));
  text += fmt::format("\n{:>12} {:>12} {:>8} {:>8}  drawn: #, law: |\n", "from", "to", "drawn %",
                      "law %");
  double widest = 0;
  for (int bin = 0; bin < bins_ + 2; ++bin) widest = std::max(widest, law_share(bin));
  for (int bin = 0; bin < bins_ + 2; ++bin) {
    if (counts_[bin] > 0 || law_share(bin) > 0) text += row(bin, widest);
  }
  return text;
}

std::string Description::picture() const {
  const double width = edge(1) - edge(0);
  std::string text = "set ylabel 'density'\nset key top right\nset yrange [0:*]\n$bins << end\n";
  for (int bin = 1; bin <= bins_; ++bin) {
    const double drawn =
        static_cast<double>(counts_[bin]) / static_cast<double>(std::max<int64_t>(n_, 1));
    text += fmt::format("{} {} {}\n", (edge(bin - 1) + edge(bin)) / 2, drawn / width,
                        law_share(bin) / width);
  }
  return text + fmt::format(
                    "end\nplot $bins using 1:2:({}) with boxes title 'drawn', "
                    "$bins using 1:3 with {} lw 2 title 'law'",
                    width, law_.whole ? "points pt 7" : "lines");
}

}  // namespace orv_cli
