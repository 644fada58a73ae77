// SPDX-License-Identifier: MIT
// The means of `orv random poisson-v`: a list, or a column of a file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orv_cli {

inline constexpr std::string_view poisson_vector_kind = "poisson-v";
inline constexpr std::string_view poisson_vector_usage =
    R"(poisson-v (--means LIST | --means-file FILE [--column NAME|K])
    a line of Poisson numbers, one for each mean, from Gaussian ones: nearly exact
)";

struct PoissonMeansOptions {
  std::string list, file, column;
};

std::vector<double> poisson_means(const PoissonMeansOptions& options);

}  // namespace orv_cli
