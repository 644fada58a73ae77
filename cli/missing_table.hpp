// SPDX-License-Identifier: MIT
// Rows of numbers of which some are missing: their moments, and what may have stood there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace orv_cli {

/// A mean and a p by p covariance, of divisor n.
struct NormalLaw {
  std::vector<double> mean, covariance;
};

struct EmResult {
  NormalLaw law;
  int32_t iterations = 0;
  bool converged = false;
};

class MissingTable {
 public:
  /// Names are for messages.
  explicit MissingTable(std::vector<std::string> names);

  /// A row of all columns, NaN where a value is missing.
  template <class T>
  void add(const T* row) {
    values_.insert(values_.end(), row, row + names_.size());
  }

  size_t columns() const { return names_.size(); }
  size_t rows() const { return values_.size() / names_.size(); }
  const double* row(size_t i) const { return &values_[i * names_.size()]; }
  int64_t missing(size_t column) const;
  int64_t bytes() const { return static_cast<int64_t>(values_.size() * sizeof(double)); }

  /// The maximum likelihood estimate, by EM; ends where no mean and covariance changes by more than
  /// 10^-9 of the columns' deviations, or at the limit. `option` is for messages.
  EmResult em(int32_t most_iterations, const std::string& option) const;

  /// What is expected of the missing values, row by row, given the others of their row.
  std::vector<double> expected(const NormalLaw& law) const;

  /// The missing values of m imputations, row by row, one imputation after the other.
  std::vector<double> impute(int32_t m, int32_t chain, int32_t most_iterations, uint64_t seed,
                             const std::string& option) const;

 private:
  /// Observed values have mean 0 and deviation 1 in these.
  struct Unit {
    double origin, scale;
  };

  std::vector<Unit> units(const std::string& option) const;
  std::vector<double> scaled(const std::vector<Unit>& units) const;

  std::vector<std::string> names_;
  std::vector<double> values_;
};

}  // namespace orv_cli
