// SPDX-License-Identifier: MIT
// Numbers beside the law that they are drawn from: moments and a histogram.
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <string>

#include "laws.hpp"
#include "stats_exact.hpp"

namespace orv_cli {

class Description {
 public:
  explicit Description(const Law& law);

  void add(double x);
  std::string text() const;

  /// A script for draw_picture: bars of what was drawn, points of the law.
  std::string picture() const;

 private:
  static constexpr int most_bins = 20;

  double edge(int i) const;
  std::string row(int bin, double widest) const;
  double law_share(int bin) const;

  Law law_;
  double low_, high_;  // quantiles of the law, and the bins between them; one more on either side
  int bins_ = most_bins;
  int64_t n_ = 0;
  ExactSum sum_, squares_;  // of distances from the middle of the bins
  double smallest_ = std::numeric_limits<double>::infinity(), largest_ = -smallest_;
  std::array<int64_t, most_bins + 2> counts_{};
};

}  // namespace orv_cli
