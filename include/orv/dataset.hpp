// SPDX-License-Identifier: MIT
// Statistics of data in memory.
//
//     orv::dataset data(orv::table(x, n, p));     // x[i p + j]: observation i of variable j
//     auto m = data.mean();
//     auto c = data.covariance();                 // c(i, j)
//     auto q = data.quantiles({0.25, 0.5, 0.75}); // q(variable, order)
//
// Data and weights stay the caller's. Doubles give doubles, floats floats. The results depend
// neither on the number of threads nor, to the bit, on layout and mask.
#pragma once

#include <orv/threads.h>
#include <orv/accumulator.hpp>
#include <orv/matrix.hpp>
#include <orv/stream.hpp>
#include <orv/task.hpp>

#include <algorithm>
#include <initializer_list>
#include <limits>
#include <span>
#include <vector>

namespace orv {

/// Estimates of groups of observations, and the pooled ones.
template <class T>
struct group_estimates {
  std::vector<T> pooled_mean;
  matrix<T> pooled_covariance;
  matrix<T> means;  ///< a row a group
  std::vector<matrix<T>> covariances;
};

/// See _zokdSSRobustCovariance; the accuracy is in deviations.
struct robust_options {
  double breakdown = 0.5, rejection = 0.001, accuracy = 1e-5;
  uint32_t iterations = 1000;  ///< 0 for the start alone
};
template <class T>
struct robust_estimate {
  std::vector<T> mean;
  matrix<T> covariance;
};

/// See _zokdSSOutliersDetection.
struct outlier_options {
  double alpha = 0.05, accuracy = 0.005;
  bool from_mean = false;  ///< the start; else from medians
};

/// See _zokdSSMissingValues; the accuracy is in deviations.
struct impute_options {
  uint32_t imputations = 5, chain = 30, em_iterations = 2000;
  double accuracy = 1e-9;
};

template <class T>
class dataset {
 public:
  explicit dataset(table<T> data) : data_(data), selected_(data.variables()) {
    for (size_t j = 0; j < selected_.size(); ++j) selected_[j] = j;
    if (data.observations() == 0) fail(SS_BAD_OBSERVATION_COUNT, "dataset", "no observations");
    if (data.variables() == 0) fail(SS_BAD_DIMENSION, "dataset", "no variables");
  }

  /// A weight for each observation, not below 0 and not all 0. They count in moments, covariances
  /// and quantiles.
  dataset& weights(std::span<const T> w) {
    check_size("weights", "the weights", w.size(), data_.observations());
    bool any = false;
    for (size_t i = 0; i < w.size(); ++i) {
      if (!(w[i] >= 0) || w[i] > std::numeric_limits<T>::max()) {
        fail(SS_NULL_WEIGHTS, "weights",
             "weight " + detail::text(w[i]) + " at " + std::to_string(i) +
                 "; weights are finite and not below 0");
      }
      any = any || w[i] > 0;
    }
    if (!any) fail(SS_NULL_WEIGHTS, "weights", "all weights are 0");
    weights_ = w;
    return *this;
  }

  /// Leaves out variables whose entry is 0, or false: results are of the others, in their order.
  template <class M>
  dataset& mask(const M& entries_of_variables) {
    check_size("mask", "the mask", std::size(entries_of_variables), data_.variables());
    std::vector<size_t> selected;
    for (size_t j = 0; j < data_.variables(); ++j) {
      if (entries_of_variables[j]) selected.push_back(j);
    }
    if (selected.empty()) fail(SS_BAD_MASK, "mask", "no variable is left");
    selected_ = std::move(selected);
    return *this;
  }

  /// Threads of the caller's, in place of orv_threads_reproducible(). With those of
  /// orv_threads_pool() the last bits of covariances depend on how many there are.
  dataset& threads(const SSThreadServices* services) {
    threads_ = services;
    return *this;
  }

  size_t observations() const { return data_.observations(); }
  /// The variables that results are of.
  const std::vector<size_t>& variables() const { return selected_; }

  std::vector<T> mean() const {
    std::vector<T> m(data_.variables());
    auto t = make_task();
    t.set(SS_PARAM_MEAN, m);
    t.run(entries<T>::basic, SS_EST_MEAN, SS_METHOD_ONE_PASS, threads_, "mean");
    return selection(m);
  }

  /// Unbiased: scatter over W - W2 / W, W and W2 being the sums of weights and their squares. NaN
  /// where less than two observations have weight.
  matrix<T> covariance(covariance_method method = covariance_method::updates) const {
    return second_moments(SS_EST_COV, SS_PARAM_COV, SS_PARAM_COV_STORAGE, method, "covariance");
  }
  /// NaN beside a variable that does not vary.
  matrix<T> correlation(covariance_method method = covariance_method::updates) const {
    auto r = second_moments(SS_EST_COR, SS_PARAM_COR, SS_PARAM_COR_STORAGE, method, "correlation");
    for (size_t j = 0; j < r.rows(); ++j) r(j, j) = r(j, j) > 0 ? T(1) : nan();
    return r;
  }

  /// Least and largest values; a NaN is passed over.
  std::vector<T> minimum() const { return extremes(SS_EST_MIN, SS_PARAM_MINIMUM, "minimum"); }
  std::vector<T> maximum() const { return extremes(SS_EST_MAX, SS_PARAM_MAXIMUM, "maximum"); }

  /// Mean to kurtosis, taken in doubles.
  accumulator moments() const { return accumulate({.moments = 4, .covariance = false}); }

  /// A row a variable, a column an order in [0, 1]: between neighbours in proportion, definition 7
  /// of Hyndman and Fan (1996); with weights the entry _zokdSSWMedian tells which value.
  matrix<T> quantiles(std::span<const double> orders) const {
    if (orders.empty()) fail(SS_BAD_QUANT_ORDERS, "quantiles", "no orders");
    for (const double q : orders) {
      if (!(q >= 0 && q <= 1)) {
        fail(SS_BAD_QUANT_ORDERS, "quantiles",
             "order " + detail::text(q) + "; orders lie from 0 to 1");
      }
    }
    const std::vector<T> wanted(orders.begin(), orders.end());
    const size_t p = selected_.size(), q = wanted.size();
    matrix<T> r(p, q, nan());
    auto t = make_task();
    if (weights_.empty()) {
      t.set(SS_PARAM_QUANT_ORDERS, wanted).set(SS_PARAM_QUANTILES, r.data());
      t.set_integer(SS_PARAM_QUANT_ORDER_COUNT, static_cast<int64_t>(q));
      t.run(entries<T>::quantiles, SS_EST_QUANTILES, SS_METHOD_FAST, threads_, "quantiles");
      return r;
    }
    std::vector<T> found(data_.variables());
    for (size_t k = 0; k < q; ++k) {  // that entry finds one quantile of each variable
      t.set(SS_PARAM_QUANT_ORDERS, &wanted[k]).set(SS_PARAM_QUANTILES, found);
      t.run(entries<T>::weighted_quantile, SS_EST_QUANTILES, SS_METHOD_FAST, threads_, "quantiles");
      for (size_t j = 0; j < p; ++j) r(j, k) = found[selected_[j]];
    }
    return r;
  }
  matrix<T> quantiles(std::initializer_list<double> orders) const {
    return quantiles(std::span(orders.begin(), orders.size()));
  }
  std::vector<T> median() const { return quantiles({0.5}).elements(); }

  /// Mean and covariance that up to half of the data can't carry away (_zokdSSRobustCovariance), of
  /// a scaled copy of the data. Weights have no part.
  robust_estimate<T> robust_covariance(const robust_options& options = {}) const {
    constexpr const char* name = "robust_covariance";
    check_unweighted(name);
    const size_t p = selected_.size();
    const std::vector<unit> units = units_of_variables(name);
    std::vector<T> x = copy(0, observations());
    for (size_t k = 0; k < x.size(); ++k) {
      x[k] = static_cast<T>((x[k] - units[k % p].origin) / units[k % p].scale);
    }
    robust_estimate<T> r{std::vector<T>(p), {p, p}};
    const T parameters[] = {static_cast<T>(options.breakdown), static_cast<T>(options.rejection),
                            static_cast<T>(options.accuracy * options.accuracy),
                            static_cast<T>(options.iterations)};
    auto t = task_of(x);
    t.set(SS_PARAM_ROBUST_PARAMS, parameters)
        .set_integer(SS_PARAM_ROBUST_PARAM_COUNT, 4)
        .set(SS_PARAM_ROBUST_MEAN, r.mean)
        .set(SS_PARAM_ROBUST_COV, r.covariance.data())
        .set_integer(SS_PARAM_ROBUST_COV_STORAGE, SS_MATRIX_FULL);
    t.run(entries<T>::robust_covariance, 0, SS_METHOD_TBS, threads_, name);
    for (size_t i = 0; i < p; ++i) {
      r.mean[i] = static_cast<T>(units[i].origin + units[i].scale * r.mean[i]);
      for (size_t j = 0; j < p; ++j) {
        r.covariance(i, j) = static_cast<T>(units[i].scale * units[j].scale * r.covariance(i, j));
      }
    }
    return r;
  }

  /// The observations that don't belong to the others (_zokdSSOutliersDetection), in their order;
  /// those that are not finite are among them. Weights have no part.
  std::vector<size_t> outliers(const outlier_options& options = {}) const {
    constexpr const char* name = "outliers";
    check_unweighted(name);
    const auto check = [](double x, const char* what, double most) {
      if (x > 0 && x < most) return;
      fail(SS_BAD_PARAMETER, name,
           std::string(what) + " is " + detail::text(x) + "; it has to be above 0" +
               (most > 1 ? "" : " and below 1"));
    };
    check(options.alpha, "alpha", 1);
    check(options.accuracy, "the accuracy", std::numeric_limits<T>::max());
    const std::vector<T> x = copy(0, observations());
    const T parameters[] = {T(options.from_mean ? 1 : 2), static_cast<T>(options.alpha),
                            static_cast<T>(options.accuracy)};
    std::vector<T> weights(observations());
    auto t = task_of(x);
    t.set(SS_PARAM_OUTLIER_PARAMS, parameters)
        .set_integer(SS_PARAM_OUTLIER_PARAM_COUNT, 3)
        .set(SS_PARAM_OUTLIER_WEIGHTS, weights);
    t.run(entries<T>::outliers, 0, SS_METHOD_BACON, threads_, name);
    std::vector<size_t> found;
    for (size_t i = 0; i < weights.size(); ++i) {
      if (weights[i] == 0) found.push_back(i);
    }
    return found;
  }

  /// Completed copies of the data, an observation a row: every NaN is a missing value, which is
  /// drawn given those that are there, as they would be under a normal law (_zokdSSMissingValues).
  /// Weights have no part.
  std::vector<matrix<T>> impute(stream& random, const impute_options& options = {}) const {
    constexpr const char* name = "impute";
    check_unweighted(name);
    if (options.imputations == 0) fail(SS_BAD_MISSING_PARAMS, name, "0 imputations; 1 or more");
    const size_t p = selected_.size();
    matrix<T> data(observations(), p);
    const std::vector<T> observed = copy(0, observations());
    std::copy(observed.begin(), observed.end(), data.data());
    std::vector<matrix<T>> completed(options.imputations, data);

    const std::vector<unit> units = units_of_observed(observed, name);
    std::vector<double> x(observed.begin(), observed.end());
    std::vector<size_t> missing;
    for (size_t k = 0; k < x.size(); ++k) {
      const bool there = x[k] == x[k];
      if (!there) missing.push_back(k);
      x[k] = there ? (x[k] - units[k % p].origin) / units[k % p].scale : orv_missing_d();
    }
    if (missing.empty()) return completed;

    const double parameters[] = {static_cast<double>(options.em_iterations),
                                 static_cast<double>(options.chain), options.accuracy,
                                 static_cast<double>(options.imputations),
                                 static_cast<double>(missing.size())};
    std::vector<double> drawn(missing.size() * options.imputations);
    task<double> t(static_cast<int64_t>(p), static_cast<int64_t>(observations()), SS_COLUMNS,
                   x.data());
    t.set(SS_PARAM_MISSING_PARAMS, parameters)
        .set_integer(SS_PARAM_MISSING_PARAM_COUNT, 5)
        .set(SS_PARAM_SIMULATED_VALUES, drawn)
        .set_integer(SS_PARAM_SIMULATED_COUNT, static_cast<int64_t>(drawn.size()));
    detail::check_statistics(entries<double>::missing_values_from(t, random.get()), name);
    for (size_t m = 0; m < completed.size(); ++m) {
      for (size_t i = 0; i < missing.size(); ++i) {
        const unit& u = units[missing[i] % p];
        completed[m].data()[missing[i]] =
            static_cast<T>(u.origin + u.scale * drawn[m * missing.size() + i]);
      }
    }
    return completed;
  }

  /// `group_of` has a number for each observation, from 0 without a gap.
  group_estimates<T> groups(std::span<const int64_t> group_of) const {
    check_size("groups", "the vector of groups", group_of.size(), data_.observations());
    const size_t g = count_groups(group_of), p = data_.variables();
    std::vector<T> mean(p), means(g * p);
    matrix<T> pooled(p, p);
    std::vector<T> covariances(g * p * p);
    auto t = make_task();
    t.set_integers(SS_PARAM_GROUP_INDICES, {group_of.begin(), group_of.end()})
        .set(SS_PARAM_POOLED_MEAN, mean)
        .set(SS_PARAM_POOLED_COV, pooled.data())
        .set_integer(SS_PARAM_POOLED_COV_STORAGE, SS_MATRIX_FULL)
        .set_integers(SS_PARAM_GROUP_OUTPUT_INDICES, std::vector<int64_t>(g, 1))
        .set(SS_PARAM_GROUP_MEANS, means)
        .set(SS_PARAM_GROUP_COV, covariances)
        .set_integer(SS_PARAM_GROUP_COV_STORAGE, SS_MATRIX_FULL);
    t.run(entries<T>::pooled_covariance, SS_EST_POOLED | SS_EST_GROUP, SS_METHOD_ONE_PASS, threads_,
          "groups");
    group_estimates<T> r{selection(mean), selection(pooled.data()), {g, selected_.size()}, {}};
    for (size_t k = 0; k < g; ++k) {
      for (size_t j = 0; j < selected_.size(); ++j) r.means(k, j) = means[k * p + selected_[j]];
      r.covariances.push_back(selection(&covariances[k * p * p]));
    }
    return r;
  }

 private:
  static constexpr T nan() { return std::numeric_limits<T>::quiet_NaN(); }

  [[noreturn]] static void fail(int32_t status, const char* function, const std::string& sentence) {
    detail::fail(status, std::string("dataset::") + function, sentence);
  }
  static void check_size(const char* function, const char* what, size_t found, size_t wanted) {
    if (found == wanted) return;
    fail(SS_BAD_OBSERVATION_COUNT, function,
         std::string(what) + " has " + std::to_string(found) + " elements; it needs " +
             std::to_string(wanted));
  }

  bool masked() const { return selected_.size() < data_.variables(); }

  task<T> make_task() const {
    task<T> t(static_cast<int64_t>(data_.variables()), static_cast<int64_t>(observations()),
              static_cast<int64_t>(data_.layout()), data_.data(),
              weights_.empty() ? nullptr : weights_.data());
    if (masked()) {
      std::vector<int64_t> mask(data_.variables());
      for (const size_t j : selected_) mask[j] = 1;
      t.set_integers(SS_PARAM_VARIABLE_MASK, std::move(mask));
    }
    return t;
  }

  matrix<T> second_moments(uint64_t estimate, int64_t parameter, int64_t storage,
                           covariance_method method, const char* function) const {
    std::vector<T> m(data_.variables()), c(data_.variables() * data_.variables());
    auto t = make_task();
    t.set(SS_PARAM_MEAN, m).set(parameter, c).set_integer(storage, SS_MATRIX_FULL);
    t.run(entries<T>::basic, SS_EST_MEAN | estimate, static_cast<uint64_t>(method), threads_,
          function);
    return selection(c.data());
  }

  std::vector<T> extremes(uint64_t estimate, int64_t parameter, const char* function) const {
    const T infinity = std::numeric_limits<T>::infinity();
    std::vector<T> r(data_.variables(), estimate == SS_EST_MIN ? infinity : -infinity);
    auto t = make_task();
    t.set(parameter, r);
    t.run(entries<T>::minmax, estimate, SS_METHOD_FAST, threads_, function);
    return selection(r);
  }

  /// The accumulator takes whole tables: without a mask, or of a copy.
  accumulator accumulate(accumulator_parts parts) const {
    accumulator a(selected_.size(), parts);
    if (!masked()) return std::move(a.add(data_, weights_, threads_));
    const size_t most = 4096, p = selected_.size();
    for (size_t first = 0; first < observations(); first += most) {
      const size_t n = std::min(observations() - first, most);
      const std::vector<T> part = copy(first, n);
      a.add(table<T>(part, p), weights_.empty() ? weights_ : weights_.subspan(first, n), threads_);
    }
    return a;
  }

  /// Observations of the selected variables, one after another.
  std::vector<T> copy(size_t first, size_t n) const {
    std::vector<T> part;
    part.reserve(n * selected_.size());
    for (size_t i = first; i < first + n; ++i) {
      for (const size_t j : selected_) part.push_back(data_(i, j));
    }
    return part;
  }
  /// A task over such a copy.
  task<T> task_of(const std::vector<T>& x) const {
    return task<T>(static_cast<int64_t>(selected_.size()), static_cast<int64_t>(observations()),
                   SS_COLUMNS, x.data());
  }

  void check_unweighted(const char* function) const {
    if (!weights_.empty()) fail(SS_NULL_WEIGHTS, function, "weights have no part in it");
  }

  /// What a variable is measured in.
  struct unit {
    double origin, scale;
  };
  /// Median, and the spread of the middle half or else the deviation.
  std::vector<unit> units_of_variables(const char* function) const {
    const matrix<T> q = quantiles({0.25, 0.5, 0.75});
    std::vector<double> deviation;
    std::vector<unit> units;
    for (size_t j = 0; j < selected_.size(); ++j) {
      const std::string variable = "variable " + std::to_string(selected_[j]);
      for (size_t i = 0; i < observations(); ++i) {
        const T x = data_(i, selected_[j]);
        if (x - x != 0) {
          fail(SS_OGK_FAILED, function,
               variable + " is " + detail::text(x) + " at observation " + std::to_string(i));
        }
      }
      double scale =
          0.7413 * (q(j, 2) - q(j, 0));  // the deviation of a normal law with that spread
      if (!(scale > 0)) {
        if (deviation.empty()) deviation = moments().standard_deviation();
        scale = deviation[j];
      }
      if (!(scale > 0)) fail(SS_OGK_FAILED, function, variable + " does not vary");
      units.push_back({q(j, 1), scale});
    }
    return units;
  }

  /// Mean and deviation of the values that are there.
  std::vector<unit> units_of_observed(const std::vector<T>& x, const char* function) const {
    const size_t p = selected_.size();
    std::vector<unit> units(p);
    for (size_t j = 0; j < p; ++j) {
      accumulator of_variable(1, {.moments = 2, .covariance = false});
      std::vector<T> there;
      for (size_t k = j; k < x.size(); k += p) {
        if (x[k] == x[k]) there.push_back(x[k]);
      }
      of_variable.add(table<T>(there, 1), {}, threads_);
      const double mean = of_variable.mean()[0], scale = of_variable.standard_deviation()[0];
      if (!(mean - mean == 0)) {
        fail(SS_BAD_MISSING_COUNT, function,
             "variable " + std::to_string(selected_[j]) +
                 (there.empty() ? " has no value" : " has infinite values"));
      }
      units[j] = {mean, scale > 0 ? scale : 1};
    }
    return units;
  }

  static size_t count_groups(std::span<const int64_t> group_of) {
    std::vector<bool> seen;
    for (const int64_t g : group_of) {
      if (g < 0 || static_cast<size_t>(g) >= group_of.size()) {
        fail(SS_BAD_GROUP_INDICES, "groups",
             "group " + std::to_string(g) + "; groups are counted from 0 without a gap");
      }
      if (seen.size() <= static_cast<size_t>(g)) seen.resize(static_cast<size_t>(g) + 1);
      seen[static_cast<size_t>(g)] = true;
    }
    const auto gap = std::find(seen.begin(), seen.end(), false);
    if (gap != seen.end()) {
      fail(SS_BAD_GROUP_INDICES, "groups",
           "group " + std::to_string(gap - seen.begin()) + " has no observation");
    }
    return seen.size();
  }

  std::vector<T> selection(const std::vector<T>& all) const {
    std::vector<T> r;
    r.reserve(selected_.size());
    for (const size_t j : selected_) r.push_back(all[j]);
    return r;
  }
  matrix<T> selection(const T* all) const {
    matrix<T> r(selected_.size(), selected_.size());
    for (size_t i = 0; i < r.rows(); ++i) {
      for (size_t j = 0; j < r.rows(); ++j) {
        r(i, j) = all[selected_[i] * data_.variables() + selected_[j]];
      }
    }
    return r;
  }

  table<T> data_;
  std::vector<size_t> selected_;
  std::span<const T> weights_;
  const SSThreadServices* threads_ = orv_threads_reproducible();
};

template <class T>
dataset(table<T>) -> dataset<T>;
template <detail::two_dimensional V>
dataset(const V& view)
    -> dataset<detail::number_of<decltype(std::declval<const V&>().data_handle())>>;

}  // namespace orv
