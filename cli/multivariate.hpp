// SPDX-License-Identifier: MIT
// Gaussian vectors of `orv random`: a covariance or its factor from a file.
#pragma once

#include <orv/zok.h>

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace orv_cli {

inline constexpr std::string_view multivariate_kind = "gaussian-mv";
inline constexpr std::string_view multivariate_usage =
    R"(gaussian-mv [--mean 0,...] (--covariance FILE | --factor FILE [--storage full])
    vectors mean + T X, X gaussian and independent, T lower triangular; a covariance is T T'
    --storage full        each row of the file is a row of T (default)
    --storage packed      the numbers of the file are T's lower triangle, column by column
    --storage diagonal    they are the diagonal of a diagonal T
    --method as for gaussian
)";

struct MultivariateOptions {
  std::string covariance, factor, storage;
};

template <class T>
struct Vectors {
  int32_t dim, storage;
  std::vector<T> mean, factor;

  int32_t draw(int32_t method, StreamState* stream, int32_t n, T* r) const;
};

/// `parameters` may have a mean: numbers with commas between.
template <class T>
Vectors<T> multivariate(const MultivariateOptions& options,
                        const std::map<std::string_view, std::string>& parameters);

}  // namespace orv_cli
