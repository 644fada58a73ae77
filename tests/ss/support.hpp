// SPDX-License-Identifier: MIT
// What the tests of statistics share: the entries of either precision under one name, and tasks
// that end with their scope.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <random>
#include <utility>
#include <vector>

#include "orv/task.hpp"
#include "orv/threads.h"

namespace orv_test {

using Precisions = testing::Types<double, float>;
template <class T>
class EachPrecision : public testing::Test {};
TYPED_TEST_SUITE(EachPrecision, Precisions);

/// The entries for floating type T.
template <class T>
using Entries = orv::entries<T>;

/// A task over data that the test keeps, with integers of either width.
template <class T>
class Task {
 public:
  /// x may be null.
  Task(int64_t p, int64_t n, int64_t layout, const T* x, bool wide = false) : wide_(wide) {
    const void* address[] = {keep({p}), keep({n}), keep({layout})};
    EXPECT_EQ(
        Entries<T>::new_task(&task_, address[0], address[1], address[2], x, nullptr, nullptr, wide),
        SS_OK);
  }
  ~Task() {
    if (task_ != nullptr) __zokSSDeleteTask(&task_);
  }
  Task(const Task&) = delete;
  Task& operator=(const Task&) = delete;

  operator SSTask*() const { return task_; }

  /// Sets a parameter to an array of the test's.
  Task& set(int64_t parameter, const T* array) {
    EXPECT_EQ(Entries<T>::edit(task_, parameter, array), SS_OK) << "parameter " << parameter;
    return *this;
  }
  Task& set(int64_t parameter, const std::vector<T>& array) { return set(parameter, array.data()); }

  /// Sets a parameter to integers, which the task keeps.
  Task& set(int64_t parameter, std::initializer_list<int64_t> values) {
    return set_integers(parameter, values);
  }
  Task& set_integers(int64_t parameter, const std::vector<int64_t>& values) {
    EXPECT_EQ(__zokiSSEditTask(task_, parameter, keep(values)), SS_OK) << "parameter " << parameter;
    return *this;
  }

 private:
  const void* keep(const std::vector<int64_t>& values) {
    auto& kept = kept_.emplace_back();
    for (const int64_t value : values) {
      kept.push_back(static_cast<int32_t>(value));
      if (wide_) kept.push_back(static_cast<int32_t>(value >> 32));
    }
    return kept.data();
  }

  bool wide_;
  SSTask* task_ = nullptr;
  std::vector<std::vector<int32_t>> kept_;
};

/// Tells zeros by their signs, and NaNs apart.
template <class T>
auto bits(const std::vector<T>& x) {
  std::vector<typename Entries<T>::word> words(x.size());
  if (!x.empty()) std::memcpy(words.data(), x.data(), x.size() * sizeof(T));
  return words;
}

enum WeightKind { unweighted, positive, with_zeros };

/// n observations of p variables, at (i, j), with weights.
template <class T>
struct Data {
  int p, n;
  std::vector<T> x, w;
  WeightKind kind;

  Data(int variables, int observations, WeightKind weights)
      : p(variables), n(observations), kind(weights) {
    std::mt19937 random(1);
    const auto uniform = [&] { return static_cast<T>(random() >> 8) * T(0x1p-24); };
    for (int k = 0; k < p * n; ++k) {
      const T u = uniform();
      x.push_back(1 + u * u - T(0.3) * uniform() + (k % p > 0 ? x[k - 1] / 4 : 0));
    }
    for (int i = 0; i < n; ++i) {
      const bool zero = kind == with_zeros && (i < 3 || random() % 4 == 0);
      w.push_back(kind == unweighted ? 1 : zero ? 0 : T(0.5) + uniform());
    }
  }
  T operator()(int i, int j) const { return x[i * p + j]; }
};

/// Data that have observation i of variable j at i p + j, in a layout.
template <class T>
std::vector<T> laid_out(int64_t layout, size_t p, const std::vector<T>& x) {
  std::vector<T> rows;
  for (size_t k = 0, n = x.size() / p; k < x.size(); ++k) rows.push_back(x[k % n * p + k / n]);
  return layout == SS_ROWS ? rows : x;
}

/// Takes the number of a case apart into choices.
struct Choices {
  int rest;
  int operator()(int count) { return std::exchange(rest, rest / count) % count; }
};

/// Calls f(i, j) for the elements of a symmetric matrix that are stored, in their order.
template <class F>
void for_each_stored(int64_t storage, int64_t p, F f) {
  for (int64_t i = 0; i < p; ++i) {
    const int64_t end = storage == SS_MATRIX_LOWER_PACKED ? i + 1 : p;
    for (int64_t j = storage == SS_MATRIX_UPPER_PACKED ? i : 0; j < end; ++j) f(i, j);
  }
}

}  // namespace orv_test
