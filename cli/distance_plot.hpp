// SPDX-License-Identifier: MIT
// A picture of distances by row, with the line beyond which a row stands apart.
#pragma once

#include <string>
#include <vector>

namespace orv_cli {

struct DistancePlot {
  std::vector<double> distances;  // from 0, of each row in turn
  double cutoff;
  std::vector<std::string> labels;  // of the rows
};

/// The largest distances beyond the cut-off line are named by their labels. The axis is logarithmic
/// where the largest is far beyond the line. What is not finite stands at the upper edge. Writes an
/// SVG picture to the file, or for "-" a plot of characters to standard output.
void distance_plot(const std::vector<double>& distances, double cutoff,
                   const std::vector<std::string>& labels, const std::string& file);

}  // namespace orv_cli
