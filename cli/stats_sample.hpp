// SPDX-License-Identifier: MIT
// Statistics of variables that are observed together, from their values block by block.
#pragma once

#include <orv/ss.h>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "stats_exact.hpp"
#include "stats_stream_quantiles.hpp"

namespace orv_cli {

/// A p by p matrix.
using Matrix = std::vector<double>;

/// Quantiles of each of p variables in turn, whose values lie observation by observation; weights
/// may be empty. With weights: see the command's help.
template <class T>
std::vector<double> quantiles_of(int64_t p, std::span<const T> values, std::span<const T> weights,
                                 std::span<const double> orders, const SSThreadServices* services);

template <class T>
class Sample {
 public:
  enum class Wanted { everything, covariance };  // the latter also gives the mean

  Sample(size_t variables, bool weighted, bool keep_values, Wanted wanted = Wanted::everything);

  /// One observation of all variables. The weight is above 0, and 1 unless the sample has weights.
  void add(std::span<const T> values, T weight);

  /// The same for a sample of one variable.
  void add(T value, T weight) {
    block_.push_back(value);
    if (weighted_) block_weights_.push_back(weight);
  }

  /// Takes what was added into the results.
  void take_block(const SSThreadServices* services);

  int64_t count() const { return count_; }
  double sum(size_t j) const { return static_cast<double>(exact_[j].sum.value()); }
  double weight_sum() const { return static_cast<double>(exact_weights_.sum.value()); }
  double weight_square_sum() const { return static_cast<double>(exact_weights_.squares.value()); }
  size_t variables() const { return static_cast<size_t>(p_); }
  double mean(size_t j) const;
  double standard_deviation(size_t j) const;
  double minimum(size_t j) const { return minimum_[j]; }
  double maximum(size_t j) const { return maximum_[j]; }
  double skewness(size_t j) const { return skewness_[j]; }
  double kurtosis(size_t j) const { return kurtosis_[j]; }
  double covariance(size_t i, size_t j) const;
  double correlation(size_t i, size_t j) const;

  // From the values, for which they have to be kept. -------------------------------------------

  /// One observation after another.
  std::span<const T> values() const { return values_; }
  /// Of each observation; none where the sample has none.
  std::span<const T> weights() const { return weights_; }
  int64_t bytes_kept() const;
  int64_t bytes_waiting() const;  // that the next block will add
  void reserve(int64_t observations);
  void drop_values();
  /// In place of values a summary is kept, from which quantiles are told, but with weights.
  void summarise_values(double epsilon, const SSThreadServices* services);
  /// Of each variable in turn; undefined where values were dropped.
  std::vector<double> quantiles(std::span<const double> orders,
                                const SSThreadServices* services) const;

  /// The covariance within groups, which has a number for each observation, dense from 0. This uses
  /// the values up.
  Matrix pooled(const std::vector<uint32_t>& groups, size_t group_count,
                const SSThreadServices* services);

 private:
  void begin(const SSThreadServices* services);
  void take_exactly();
  /// The exact one where it can be told, else the one from updates.
  long double variance(size_t j) const;

  int64_t p_;
  bool weighted_, keep_;
  Wanted wanted_;
  int64_t count_ = 0;
  std::vector<T> block_, block_weights_, values_, weights_;
  std::shared_ptr<StreamQuantiles<T>> stream_;
  std::vector<T> origin_;  // subtracted from the values that moments are taken of
  std::vector<T> mean_, raw_2_, raw_3_, raw_4_, central_2_, central_3_, central_4_, skewness_,
      kurtosis_, covariance_, minimum_, maximum_;
  T weight_sums_[2] = {};
  ExactWeights exact_weights_;
  std::vector<ExactMoments> exact_;
};

struct Partial {
  Matrix covariance, correlation;  // of the variables of interest
};

/// `roles`: 1 of interest, -1 given, 0 neither, for each variable of the covariance.
template <class T>
Partial partial_covariance(const Matrix& covariance, const std::vector<int64_t>& roles,
                           const SSThreadServices* services);

}  // namespace orv_cli
