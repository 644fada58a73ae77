// SPDX-License-Identifier: MIT
#include "stats_missing.hpp"

#include <fmt/format.h>

#include <cmath>
#include <utility>

#include "error.hpp"

namespace orv_cli {
namespace {

constexpr int32_t most_iterations = 10000;

}  // namespace

void check_em(const StatsOptions& options) {
  for (const auto& [given, option] : {std::pair(!options.weights.empty(), "--weights"),
                                      {!options.by.empty(), "--by"},
                                      {!options.partial.empty(), "--partial"},
                                      {!options.robust.empty(), "--robust"}}) {
    if (given) {
      throw Error("{}: does not go with --missing em; allowed are available, drop and fail",
                  option);
    }
  }
}

void report_em(const MissingTable& table, const std::vector<std::string>& names, Report& report) {
  const EmResult em = table.em(most_iterations, "--missing em");
  const size_t p = names.size();
  const Matrix& covariance = em.law.covariance;
  Matrix means, correlation(covariance);
  for (size_t i = 0; i < p; ++i) {
    const double deviation = std::sqrt(covariance[i * (p + 1)]);
    means.push_back(em.law.mean[i]);
    means.push_back(deviation);
    for (size_t j = 0; j < p; ++j) {
      const double scale = deviation * std::sqrt(covariance[j * (p + 1)]);
      correlation[i * p + j] = i == j ? 1 : covariance[i * p + j] / scale;
    }
  }
  report.matrices.push_back({"EM estimate", names, means, {"mean", "std. deviation"}});
  report.matrices.push_back({"EM covariance", names, covariance});
  report.matrices.push_back({"EM correlation", names, correlation});
  report.notes.push_back(
      em.converged ? fmt::format("EM: {} iterations; variances have the divisor {}", em.iterations,
                                 table.rows())
                   : fmt::format("EM had not come to rest after {} iterations", em.iterations));
}

}  // namespace orv_cli
