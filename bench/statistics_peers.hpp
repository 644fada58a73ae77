// SPDX-License-Identifier: MIT
// What statistics are timed beside: a plain sum, bare BLAS, the C++ library, and other libraries.
#pragma once

#include <stdint.h>

#include <functional>
#include <string>
#include <vector>

namespace orv_bench {

/// n observations of p variables: variable j is a row of n, or a column at a distance of p.
template <class T>
struct Table {
  const T* x;
  int32_t p, n;
  bool rows;
  T operator()(int64_t i, int64_t j) const { return x[rows ? j * n + i : i * p + j]; }
};

inline constexpr int32_t groups = 5;
inline int32_t group_of(int32_t i) {
  return static_cast<int32_t>((static_cast<uint32_t>(i) * 2654435761u >> 16) % groups);
}

/// Of the nine quantiles.
inline constexpr double orders[] = {0.01, 0.05, 0.1, 0.25, 0.5, 0.75, 0.9, 0.95, 0.99};

/// What plain loops find, in double precision.
struct Truth {
  using Values = std::vector<double>;
  Values mean, raw2, raw3, raw4, least, largest, variance, covariance, pooled;
  Values sorted, quantiles;  // of a table of one variable
  Values robust_mean, robust_cov;
};
/// Found when it is first asked for.
using LazyTruth = std::function<const Truth&()>;

/// Whether results are the expected ones, but for rounding in type T.
template <class T>
bool near(const T* found, const Truth::Values& expected) {
  const double tolerance = sizeof(T) == 8 ? 1e-9 : 3e-3;
  for (size_t i = 0; i < expected.size(); ++i) {
    const double difference = static_cast<double>(found[i]) - expected[i];
    if (!(difference <= tolerance && difference >= -tolerance)) return false;
  }
  return !expected.empty();
}

struct Contender {
  std::string name;  // WHO/WORK
  std::function<void()> run;
  std::function<bool()> verified;  // what the last run has left
};

std::vector<Contender> statistics_peers(const Table<double>& table, const LazyTruth& truth);
std::vector<Contender> statistics_peers(const Table<float>& table, const LazyTruth& truth);

/// The orthogonalised Gnanadesikan-Kettenring estimate (Maronna and Zamar 2002) as C++ programs
/// write it: columns in hand, medians by std::nth_element.
void plain_ogk(const Table<double>& table, Truth::Values* mean, Truth::Values* cov);
Contender plain_ogk_peer(const Table<double>& table, const LazyTruth& truth);

/// Those that are not installed for this word size.
std::vector<std::string> missing_statistics_peers();

}  // namespace orv_bench
