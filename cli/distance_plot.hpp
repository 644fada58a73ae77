// A picture of distances by row, with the line beyond which a row stands apart.
#pragma once

#include <string>
#include <vector>

namespace orv_cli {

/// Distances from 0, one for each row in turn, and the cut-off line. The largest of those beyond it
/// are named by their labels, of which there are as many. The axis is logarithmic where the largest
/// distance is far beyond the line. What is not finite stands at the upper edge. Writes an SVG
/// picture to the file, or for "-" a plot of characters to standard output.
void distance_plot(const std::vector<double>& distances, double cutoff,
                   const std::vector<std::string>& labels, const std::string& file);

}  // namespace orv_cli
