// SPDX-License-Identifier: MIT
#include "histogram.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace orv_cli {
namespace {

/// The number of the form 1, 2 or 5 times a power of ten that is nearest by its ratio.
double round_width(double width) {
  const double power = std::pow(10, std::floor(std::log10(width))), rest = width / power;
  return power * (rest < std::sqrt(2.0)    ? 1
                  : rest < std::sqrt(10.0) ? 2
                  : rest < std::sqrt(50.0) ? 5
                                           : 10);
}

struct Range {
  double low, high;
  int64_t count;
  bool whole;
};

template <class T>
Range range_of(std::span<const T> values) {
  Range r = {INFINITY, -INFINITY, 0, true};
  for (const T x : values) {
    if (!std::isfinite(x)) continue;
    r.low = std::min(r.low, double{x});
    r.high = std::max(r.high, double{x});
    r.whole = r.whole && std::trunc(x) == x && std::fabs(x) < 1e15;
    ++r.count;
  }
  return r;
}

}  // namespace

template <class T>
Histogram histogram_of(std::span<const T> values, int32_t bins) {
  const Range r = range_of(values);
  Histogram h;
  if (r.count == 0) return h;
  h.whole = r.whole;
  // Sturges (1926), and more for many: a screen's worth at most.
  const double wish = bins > 0 ? bins : std::min(1 + std::log2(static_cast<double>(r.count)), 20.0);
  const double width = r.high / wish - r.low / wish + (r.whole ? 1 / wish : 0);
  h.width = width > 0 ? round_width(width) : 1;
  if (r.whole) h.width = std::max(1.0, h.width);
  h.low = std::floor(r.low / h.width) * h.width;
  const auto bin_of = [&](double x) {
    return static_cast<size_t>(std::max(0.0, std::floor((x - h.low) / h.width)));
  };
  h.counts.resize(std::min<size_t>(bin_of(r.high) + 1, 1 << 20));
  for (const T x : values) {
    if (std::isfinite(x)) ++h.counts[std::min(bin_of(x), h.counts.size() - 1)];
  }
  return h;
}

template Histogram histogram_of(std::span<const double>, int32_t);
template Histogram histogram_of(std::span<const float>, int32_t);

std::string text_of(const Histogram& h, size_t width) {
  if (h.counts.empty()) return "no numbers\n";
  const auto most = static_cast<double>(std::ranges::max(h.counts));
  std::string text;
  for (size_t bin = 0; bin < h.counts.size(); ++bin) {
    const double share = static_cast<double>(h.counts[bin]) / most;
    const auto length = static_cast<size_t>(std::lround(share * static_cast<double>(width)));
    const auto number = [&](double x) {  // 0.30000000000000004 is 0.3
      return fmt::format("{:.10g}", std::fabs(x) < 1e-9 * h.width ? 0 : x);
    };
    const std::string bar(h.counts[bin] > 0 ? std::max<size_t>(length, 1) : 0, '#');
    text += fmt::format("{:>12} {:>12} {:>9}{}{}\n", number(h.first(bin)), number(h.last(bin)),
                        h.counts[bin], bar.empty() ? "" : "  ", bar);
  }
  return text;
}

}  // namespace orv_cli
