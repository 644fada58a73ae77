// SPDX-License-Identifier: MIT
// Counts of numbers in bins of one width with ends that are easy to read.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace orv_cli {

struct Histogram {
  double low = 0, width = 0;
  std::vector<int64_t> counts;
  bool whole = false;  // bins of whole numbers, each from its first number to its last

  /// The lower edge of a bin; of the one behind the last, the upper edge of that.
  double edge(size_t bin) const { return low + static_cast<double>(bin) * width; }
  double first(size_t bin) const { return edge(bin); }
  double last(size_t bin) const { return whole ? edge(bin + 1) - 1 : edge(bin + 1); }
};

/// `bins` is a wish, met as nearly as widths of 1, 2 or 5 times a power of ten allow; 0 leaves it
/// to the numbers. Infinite ones are passed over. A bin has its lower edge and not its upper.
template <class T>
Histogram histogram_of(std::span<const T> values, int32_t bins);

/// A line for each bin: its ends, its count and a bar of at most `width` characters.
std::string text_of(const Histogram& histogram, size_t width);

}  // namespace orv_cli
