// SPDX-License-Identifier: MIT
#include "stats_sample.hpp"

#include <orv/task.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <stdexcept>
#include <type_traits>

#include "error.hpp"

namespace orv_cli {
namespace {

template <class T>
using Entries = orv::entries<T>;

void check(int32_t status) {
  if (status == SS_NO_MEMORY) throw std::bad_alloc();
  if (status != SS_OK) throw std::runtime_error(fmt::format("statistics: status {}", status));
}

/// A task over observations that lie one after another. All that it is given stays the caller's.
template <class T>
class Task {
 public:
  Task(int64_t p, int64_t n, const T* x, const T* weights = nullptr) : p_(p), n_(n) {
    check(Entries<T>::new_task(&task_, &p_, &n_, &layout_, x, weights, nullptr, 1));
  }
  ~Task() { __zokSSDeleteTask(&task_); }
  Task(const Task&) = delete;
  Task& operator=(const Task&) = delete;

  operator SSTask*() const { return task_; }
  void set(int64_t parameter, const T* array) { check(Entries<T>::edit(task_, parameter, array)); }
  void set(int64_t parameter, const std::vector<T>& array) { set(parameter, array.data()); }
  void set(int64_t parameter, const int64_t* integers) {
    check(__zokiSSEditTask(task_, parameter, integers));
  }
  void set_full_storage(int64_t parameter) { set(parameter, &full_); }

 private:
  int64_t p_, n_, layout_ = SS_COLUMNS, full_ = SS_MATRIX_FULL;
  SSTask* task_ = nullptr;
};

template <class T>
const T* data_or_null(const std::vector<T>& v) {
  return v.empty() ? nullptr : v.data();
}

template <class T>
void append(std::vector<T>& to, const std::vector<T>& from) {
  to.insert(to.end(), from.begin(), from.end());
}

/// Gives the memory back, too.
template <class T>
void release(std::vector<T>& v) {
  std::vector<T>().swap(v);
}

constexpr double undefined = std::numeric_limits<double>::quiet_NaN();
constexpr uint64_t covariance_estimates = SS_EST_MEAN | SS_EST_COV;
constexpr uint64_t all_estimates = covariance_estimates | SS_EST_RAW2 | SS_EST_RAW3 | SS_EST_RAW4 |
                                   SS_EST_CEN2 | SS_EST_CEN3 | SS_EST_CEN4 | SS_EST_SKEWNESS |
                                   SS_EST_KURTOSIS;

}  // namespace

template <class T>
Sample<T>::Sample(size_t variables, bool weighted, bool keep_values, Wanted wanted)
    : p_(static_cast<int64_t>(variables)),
      weighted_(weighted),
      keep_(keep_values),
      wanted_(wanted) {
  for (auto* results : {&origin_, &mean_, &raw_2_, &raw_3_, &raw_4_, &central_2_, &central_3_,
                        &central_4_, &skewness_, &kurtosis_, &minimum_, &maximum_}) {
    results->assign(variables, std::numeric_limits<T>::quiet_NaN());
  }
  covariance_.assign(variables * variables, std::numeric_limits<T>::quiet_NaN());
  exact_.resize(variables);
}

template <class T>
void Sample<T>::add(std::span<const T> values, T weight) {
  block_.insert(block_.end(), values.begin(), values.end());
  if (weighted_) block_weights_.push_back(weight);
}

/// Moments about zero would lose the digits of data that lie far from it. The first block's mean is
/// a better origin than a single observation, which may lie far from all others.
template <class T>
void Sample<T>::begin(const SSThreadServices* services) {
  std::copy_n(block_.begin(), p_, minimum_.begin());
  maximum_ = minimum_;
  Task<T> task(p_, static_cast<int64_t>(block_.size()) / p_, block_.data(),
               data_or_null(block_weights_));
  task.set(SS_PARAM_MEAN, origin_);
  check(Entries<T>::basic(task, SS_EST_MEAN, SS_METHOD_ONE_PASS, services));
  for (T& origin : origin_) {
    if (!std::isfinite(origin)) origin = 0;
  }
}

/// In the order of the observations, whatever threads there are.
template <class T>
void Sample<T>::take_exactly() {
  const size_t p = variables(), n = block_.size() / p;
  for (size_t i = 0; i < n; i += exact_together) {
    const size_t count = std::min(n - i, exact_together);
    const T* const weights = weighted_ ? &block_weights_[i] : nullptr;
    exact_weights_.add(weights, count);
    for (size_t j = 0; j < p; ++j) {
      exact_[j].add(&block_[i * p + j], p, weights, count, origin_[j]);
    }
  }
}

template <class T>
void Sample<T>::take_block(const SSThreadServices* services) {
  if (block_.empty()) return;
  if (count_ == 0) begin(services);
  const auto n = static_cast<int64_t>(block_.size()) / p_;
  count_ += n;
  if (keep_) {
    append(values_, block_);
    append(weights_, block_weights_);
  }
  if (stream_) stream_->add(block_, services);
  Task<T> task(p_, n, block_.data(), data_or_null(block_weights_));
  if (wanted_ == Wanted::everything) {
    task.set(SS_PARAM_MINIMUM, minimum_);
    task.set(SS_PARAM_MAXIMUM, maximum_);
    check(Entries<T>::minmax(task, SS_EST_MIN | SS_EST_MAX, SS_METHOD_FAST, services));
    take_exactly();
  }
  for (size_t i = 0; i < block_.size(); i += variables()) {
    for (size_t j = 0; j < variables(); ++j) block_[i + j] -= origin_[j];
  }
  const std::pair<int64_t, const std::vector<T>*> results[] = {
      {SS_PARAM_MEAN, &mean_},
      {SS_PARAM_RAW_MOMENT_2, &raw_2_},
      {SS_PARAM_RAW_MOMENT_3, &raw_3_},
      {SS_PARAM_RAW_MOMENT_4, &raw_4_},
      {SS_PARAM_CENTRAL_MOMENT_2, &central_2_},
      {SS_PARAM_CENTRAL_MOMENT_3, &central_3_},
      {SS_PARAM_CENTRAL_MOMENT_4, &central_4_},
      {SS_PARAM_SKEWNESS, &skewness_},
      {SS_PARAM_KURTOSIS, &kurtosis_},
      {SS_PARAM_COV, &covariance_}};
  for (const auto& [parameter, array] : results) task.set(parameter, *array);
  task.set_full_storage(SS_PARAM_COV_STORAGE);
  task.set(SS_PARAM_ACCUMULATED_WEIGHTS, weight_sums_);
  check(Entries<T>::basic(task,
                          wanted_ == Wanted::everything ? all_estimates : covariance_estimates,
                          SS_METHOD_ONE_PASS, services));
  block_.clear();
  block_weights_.clear();
}

template <class T>
double Sample<T>::mean(size_t j) const {
  const double exact = exact_[j].mean(exact_weights_);
  return std::isfinite(exact) ? exact : static_cast<double>(origin_[j]) + mean_[j];
}

template <class T>
long double Sample<T>::variance(size_t j) const {
  const long double exact = exact_[j].variance(exact_weights_);
  if (!std::isfinite(exact)) return covariance_[j * (variables() + 1)];
  return minimum_[j] < maximum_[j] ? exact : 0;
}

template <class T>
double Sample<T>::standard_deviation(size_t j) const {
  return count_ > 1 ? static_cast<double>(std::sqrt(variance(j))) : undefined;
}

template <class T>
double Sample<T>::covariance(size_t i, size_t j) const {
  if (count_ < 2) return undefined;
  return i == j ? static_cast<double>(variance(i)) : covariance_[i * variables() + j];
}

template <class T>
double Sample<T>::correlation(size_t i, size_t j) const {
  if (i == j) return 1;
  const auto updated = [&](size_t k) { return double{covariance_[k * (variables() + 1)]}; };
  return covariance(i, j) / (std::sqrt(updated(i)) * std::sqrt(updated(j)));
}

// ---- From the values ----------------------------------------------------------------------------

template <class T>
int64_t Sample<T>::bytes_kept() const {
  return static_cast<int64_t>((values_.size() + weights_.size()) * sizeof(T));
}

template <class T>
int64_t Sample<T>::bytes_waiting() const {
  return static_cast<int64_t>((block_.size() + block_weights_.size()) * sizeof(T));
}

template <class T>
void Sample<T>::reserve(int64_t observations) {
  values_.reserve(static_cast<size_t>(observations) * variables());
  if (weighted_) weights_.reserve(static_cast<size_t>(observations));
}

template <class T>
void Sample<T>::drop_values() {
  keep_ = false;
  release(values_);
  release(weights_);
}

template <class T>
void Sample<T>::summarise_values(double epsilon, const SSThreadServices* services) {
  stream_ = std::make_shared<StreamQuantiles<T>>(p_, epsilon);
  if (!values_.empty()) stream_->add(values_, services);
  drop_values();
}

template <class T>
std::vector<double> quantiles_of(int64_t p, std::span<const T> values, std::span<const T> weights,
                                 std::span<const double> orders, const SSThreadServices* services) {
  const std::vector<T> wanted(orders.begin(), orders.end());
  const auto orders_count = static_cast<int64_t>(orders.size());
  const auto variables = static_cast<size_t>(p);
  std::vector<double> results(variables * orders.size(), undefined);
  if (values.empty() || orders.empty()) return results;
  Task<T> task(p, static_cast<int64_t>(values.size()) / p, values.data(),
               weights.empty() ? nullptr : weights.data());
  std::vector<T> found(results.size(), std::numeric_limits<T>::quiet_NaN());
  task.set(SS_PARAM_QUANTILES, found);
  if (weights.empty()) {
    task.set(SS_PARAM_QUANT_ORDERS, wanted);
    task.set(SS_PARAM_QUANT_ORDER_COUNT, &orders_count);
    check(Entries<T>::quantiles(task, SS_EST_QUANTILES, SS_METHOD_FAST, services));
    std::ranges::copy(found, results.begin());
    return results;
  }
  for (size_t i = 0; i < orders.size(); ++i) {  // that entry finds one quantile of each variable
    task.set(SS_PARAM_QUANT_ORDERS, &wanted[i]);
    check(Entries<T>::weighted_quantile(task, SS_EST_QUANTILES, SS_METHOD_FAST, services));
    for (size_t j = 0; j < variables; ++j) results[j * orders.size() + i] = found[j];
  }
  return results;
}

template <class T>
std::vector<double> Sample<T>::quantiles(std::span<const double> orders,
                                         const SSThreadServices* services) const {
  if (stream_) return stream_->answers(orders, services);
  return quantiles_of<T>(p_, values(), weights(), orders, services);
}

/// The covariance of the distances from the groups' means, over what is left of the observations.
template <class T>
Matrix Sample<T>::pooled(const std::vector<uint32_t>& groups, size_t group_count,
                         const SSThreadServices* services) {
  const size_t p = variables();
  std::vector<ExactWeights> group_weights(group_count);
  std::vector<ExactMoments> exact(group_count * p);
  const auto weight = [&](size_t i) { return weighted_ ? &weights_[i] : nullptr; };
  for (size_t i = 0; i < groups.size(); ++i) {
    group_weights[groups[i]].add(weight(i), 1);
    for (size_t j = 0; j < p; ++j) {
      exact[groups[i] * p + j].add(&values_[i * p + j], 1, weight(i), 1, origin_[j]);
    }
  }
  for (size_t i = 0; i < groups.size(); ++i) {
    for (size_t j = 0; j < p; ++j) {
      const double mean = exact[groups[i] * p + j].mean(group_weights[groups[i]]);
      values_[i * p + j] = static_cast<T>(values_[i * p + j] - mean);
    }
  }
  std::vector<T> mean(p), covariance(p * p);
  Task<T> task(p_, count_, values_.data(), data_or_null(weights_));
  task.set(SS_PARAM_MEAN, mean);
  task.set(SS_PARAM_COV, covariance);
  task.set_full_storage(SS_PARAM_COV_STORAGE);
  check(Entries<T>::basic(task, covariance_estimates, SS_METHOD_FAST, services));
  const auto freedom = [](const ExactWeights& w) {
    return w.sum.value() - w.squares.value() / w.sum.value();
  };
  long double within = 0;
  for (const ExactWeights& w : group_weights) {
    if (w.sum.value() > 0) within += freedom(w);
  }
  const auto scale = static_cast<double>(freedom(exact_weights_) / within);
  Matrix result(covariance.begin(), covariance.end());
  for (double& x : result) x = within > 0 ? x * scale : undefined;
  return result;
}

// ---- Matrices -----------------------------------------------------------------------------------

namespace {

/// Whether the given columns vary, each with a part of its own, so that rounding leaves digits of
/// the inverse: a Cholesky factor of their correlation.
bool given_are_independent(const Matrix& covariance, const std::vector<int64_t>& roles) {
  const size_t p = roles.size();
  std::vector<std::vector<double>> factor;  // row by row
  std::vector<size_t> given;
  for (size_t i = 0; i < p; ++i) {
    if (roles[i] != -1) continue;
    auto& row = factor.emplace_back();
    given.push_back(i);
    for (size_t k = 0; k < factor.size(); ++k) {
      const size_t j = given[k];
      double sum = covariance[i * p + j] /
                   (std::sqrt(covariance[i * (p + 1)]) * std::sqrt(covariance[j * (p + 1)]));
      for (size_t m = 0; m < k; ++m) sum -= row[m] * factor[k][m];
      if (i == j && !(sum > 1e-12)) return false;
      row.push_back(i == j ? std::sqrt(sum) : sum / factor[k][k]);
    }
  }
  return true;
}

}  // namespace

template <class T>
Partial partial_covariance(const Matrix& covariance, const std::vector<int64_t>& roles,
                           const SSThreadServices* services) {
  constexpr const char* dependent =
      "--given: a column is constant or depends on the others linearly; leave it out";
  if (!given_are_independent(covariance, roles)) throw Error(dependent);
  const auto m = static_cast<size_t>(std::ranges::count(roles, 1));
  const std::vector<T> source(covariance.begin(), covariance.end());
  std::vector<T> cov(m * m), cor(m * m);
  Task<T> task(static_cast<int64_t>(roles.size()), 0, nullptr);
  task.set(SS_PARAM_COV, source);
  task.set_full_storage(SS_PARAM_COV_STORAGE);
  task.set(SS_PARAM_PARTIAL_INDEX_ARRAY, roles.data());
  task.set(SS_PARAM_PARTIAL_COV, cov);
  task.set_full_storage(SS_PARAM_PARTIAL_COV_STORAGE);
  task.set(SS_PARAM_PARTIAL_COR, cor);
  task.set_full_storage(SS_PARAM_PARTIAL_COR_STORAGE);
  const int32_t status = Entries<T>::partial_covariance(
      task, SS_EST_PARTIAL_COV | SS_EST_PARTIAL_COR, SS_METHOD_FAST, services);
  if (status == SS_FACTOR_FAILED || status == SS_INVERSE_FAILED) {
    throw Error(dependent);
  }
  check(status);
  for (size_t i = 0; i < m; ++i) cor[i * (m + 1)] = 1;  // the library has variances there
  return {{cov.begin(), cov.end()}, {cor.begin(), cor.end()}};
}

#define ORV_QUANTILES(T)                                                                     \
  template std::vector<double> quantiles_of(int64_t, std::span<const T>, std::span<const T>, \
                                            std::span<const double>, const SSThreadServices*);
ORV_QUANTILES(float)
ORV_QUANTILES(double)
#undef ORV_QUANTILES
template class Sample<float>;
template class Sample<double>;
template Partial partial_covariance<float>(const Matrix&, const std::vector<int64_t>&,
                                           const SSThreadServices*);
template Partial partial_covariance<double>(const Matrix&, const std::vector<int64_t>&,
                                            const SSThreadServices*);

}  // namespace orv_cli
