// SPDX-License-Identifier: MIT
#include "missing_table.hpp"

#include <orv/ss.h>
#include <orv/zok.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

#include "error.hpp"

namespace orv_cli {
namespace {

constexpr double accuracy = 1e-9;

/// A task over a table, with the parameters of the algorithms.
class Task {
 public:
  Task(size_t p, const std::vector<double>& values, double em_iterations, double chain, double m)
      : sizes_{static_cast<int64_t>(p), static_cast<int64_t>(values.size() / p), SS_COLUMNS, 5},
        missing_(std::ranges::count_if(values, [](double x) { return std::isnan(x); })),
        params_{em_iterations, chain, accuracy, m, static_cast<double>(missing_)},
        simulated_count_(static_cast<int64_t>(m) * missing_) {
    task_.int_is_64 = 1;
    task_.is_double = 1;
    task_.dimension = &sizes_[0];
    task_.observation_count = &sizes_[1];
    task_.observation_storage = &sizes_[2];
    task_.missing_param_count = &sizes_[3];
    task_.missing_params = params_;
    task_.observations = values.data();
  }
  Task(const Task&) = delete;
  Task& operator=(const Task&) = delete;

  SSTask* record() { return &task_; }

  std::vector<double> simulated() {
    std::vector<double> values(static_cast<size_t>(simulated_count_));
    task_.simulated_values = values.data();
    task_.simulated_count = &simulated_count_;
    return values;
  }

 private:
  int64_t sizes_[4];
  int64_t missing_;
  double params_[5];
  int64_t simulated_count_;
  SSTask task_ = {};
};

void check(int32_t status, const std::string& option) {
  switch (status) {
    case SS_OK:
      return;
    case SS_NO_MEMORY:
    case RNG_NO_MEMORY:
      throw std::bad_alloc();
    default:
      throw Error(
          "{}: a covariance is not positive definite (status {}): columns depend on each other, or "
          "there are too few rows for them; --select fewer",
          option, status);
  }
}

class Stream {
 public:
  explicit Stream(uint64_t seed) {
    const uint32_t words[] = {static_cast<uint32_t>(seed), static_cast<uint32_t>(seed >> 32)};
    if (__zokNewStreamEx(&stream_, BRNG_MT19937, 2, words) != RNG_OK) throw std::bad_alloc();
  }
  ~Stream() { __zokDeleteStream(&stream_); }
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;
  operator StreamState*() const { return stream_; }

 private:
  StreamState* stream_ = nullptr;
};

}  // namespace

MissingTable::MissingTable(std::vector<std::string> names) : names_(std::move(names)) {}

int64_t MissingTable::missing(size_t column) const {
  int64_t count = 0;
  for (size_t i = 0; i < rows(); ++i) count += std::isnan(row(i)[column]);
  return count;
}

std::vector<MissingTable::Unit> MissingTable::units(const std::string& option) const {
  std::vector<Unit> result;
  for (size_t j = 0; j < columns(); ++j) {
    double count = 0, sum = 0, squares = 0;
    for (size_t i = 0; i < rows(); ++i) {
      const double x = row(i)[j];
      if (std::isnan(x)) continue;
      if (std::isinf(x)) {
        throw Error("{}: a value of {} is infinite; finite numbers are needed", option,
                    in_quotes(names_[j]));
      }
      ++count, sum += x;
    }
    if (count == 0) {
      throw Error("{}: {} has no number; leave it out with --select", option, in_quotes(names_[j]));
    }
    for (size_t i = 0; i < rows(); ++i) {
      const double d = row(i)[j] - sum / count;
      if (!std::isnan(d)) squares += d * d;
    }
    const double scale = std::sqrt(squares / count);
    result.push_back({sum / count, scale > 0 ? scale : 1});
  }
  return result;
}

std::vector<double> MissingTable::scaled(const std::vector<Unit>& units) const {
  std::vector<double> result;
  for (size_t k = 0; k < values_.size(); ++k) {
    const Unit& unit = units[k % columns()];
    const double x = values_[k];
    result.push_back(std::isnan(x) ? orv_missing_d() : (x - unit.origin) / unit.scale);
  }
  return result;
}

EmResult MissingTable::em(int32_t most_iterations, const std::string& option) const {
  const size_t p = columns();
  const std::vector<Unit> unit = units(option);
  const std::vector<double> values = scaled(unit);
  std::vector<double> moments(p * (p + 3) / 2);
  EmResult result;
  Task task(p, values, most_iterations, 1, 1);
  check(_zokdSSMissingMoments(task.record(), moments.data(), &result.iterations), option);
  result.converged = result.iterations < most_iterations;
  result.law.covariance.resize(p * p);
  const double* packed = &moments[p];
  for (size_t i = 0; i < p; ++i) {
    result.law.mean.push_back(unit[i].origin + unit[i].scale * moments[i]);
    for (size_t j = i; j < p; ++j) {
      const double c = *packed++ * unit[i].scale * unit[j].scale;
      result.law.covariance[i * p + j] = result.law.covariance[j * p + i] = c;
    }
  }
  return result;
}

namespace {

/// What is expected of all columns, given the observed ones of a row, by elimination of these. One
/// whose variance the ones before explain adds nothing.
std::vector<double> expect(const NormalLaw& law, const double* row) {
  constexpr double rounding = 1e-12;
  const size_t p = law.mean.size();
  std::vector<double> cov = law.covariance, expected = law.mean, with(p);
  for (size_t k = 0; k < p; ++k) {
    const double pivot = cov[k * p + k];
    if (std::isnan(row[k]) || !(pivot > rounding * law.covariance[k * p + k])) continue;
    const double off = (row[k] - expected[k]) / pivot;
    std::copy_n(&cov[k * p], p, with.begin());
    for (size_t i = 0; i < p; ++i) {
      expected[i] += with[i] * off;
      for (size_t j = 0; j < p; ++j) cov[i * p + j] -= with[i] * with[j] / pivot;
    }
  }
  return expected;
}

}  // namespace

std::vector<double> MissingTable::expected(const NormalLaw& law) const {
  std::vector<double> result;
  for (size_t i = 0; i < rows(); ++i) {
    const double* const x = row(i);
    if (std::none_of(x, x + columns(), [](double v) { return std::isnan(v); })) continue;
    const std::vector<double> whole = expect(law, x);
    for (size_t j = 0; j < columns(); ++j) {
      if (std::isnan(x[j])) result.push_back(whole[j]);
    }
  }
  return result;
}

std::vector<double> MissingTable::impute(int32_t m, int32_t chain, int32_t most_iterations,
                                         uint64_t seed, const std::string& option) const {
  const std::vector<Unit> unit = units(option);
  const std::vector<double> values = scaled(unit);
  if (std::ranges::none_of(values, [](double x) { return std::isnan(x); })) return {};
  Task task(columns(), values, most_iterations, chain, m);
  std::vector<double> result = task.simulated();
  check(_zokdSSMissingValuesFrom(task.record(), Stream(seed)), option);
  size_t next = 0;
  for (int32_t i = 0; i < m; ++i) {
    for (size_t k = 0; k < values.size(); ++k) {
      if (!std::isnan(values[k])) continue;
      const Unit& u = unit[k % columns()];
      result[next] = u.origin + u.scale * result[next];
      ++next;
    }
  }
  return result;
}

}  // namespace orv_cli
