// SPDX-License-Identifier: MIT
// Points of low discrepancy of `orv random`.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "random_streams.hpp"

namespace orv_cli {

inline constexpr std::string_view sobol_kind = "sobol", niederreiter_kind = "niederreiter";
inline constexpr std::string_view points_usage =
    R"(sobol [--dim 2] [--shift SEED]
niederreiter [--dim 2] [--shift SEED]
    points of low discrepancy on [0, 1) in up to 40 and 318 dimensions, a point a line
    --shift turns bits of each coordinate, the same in all points, at random
)";

bool makes_points(std::string_view kind);

class Points {
 public:
  using Option = std::optional<std::string>;

  /// `skip` counts points.
  Points(std::string_view kind, const Option& dim, const Option& shift, const Option& skip);

  int32_t dim() const { return dim_; }

  /// n points, all coordinates of each.
  template <class T>
  int32_t draw(int32_t n, T* r);

 private:
  int32_t dim_;
  Stream stream_;
  std::vector<uint32_t> shift_;  // a word for each coordinate, or none
};

}  // namespace orv_cli
