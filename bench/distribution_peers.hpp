// SPDX-License-Identifier: MIT
// Laws that are timed, and other libraries' numbers of them.
#pragma once

#include <stdint.h>

#include <functional>
#include <string>
#include <vector>

namespace orv_bench {

inline constexpr double gamma_shapes[] = {0.3, 0.8, 1, 2.5, 20};
inline constexpr double beta_shapes[][2] = {{0.3, 0.3}, {0.8, 2}, {2, 3}, {20, 30}};

inline constexpr double poisson_means[] = {0.5, 5, 50, 1e4, 1e8};
inline constexpr double binomial_trials[][2] = {{10, 0.5}, {100, 0.1}, {1e4, 0.3}, {1e9, 0.5}};
/// Lot, sample, marked.
inline constexpr double hypergeometric_lots[][3] = {
    {50, 10, 20}, {1000, 120, 300}, {1e5, 1000, 5e4}, {9e8, 1e6, 5e8}};
inline constexpr double negbinomial_shapes[][2] = {
    {3, 0.5}, {10.5, 0.2}, {0.5, 1e-4}, {100, 0.1}, {1000, 1e-3}};
inline constexpr double geometric_chances[] = {0.5, 0.1, 1e-3};
inline constexpr double bernoulli_chance = 0.3;
inline constexpr int32_t integers_below = 1000;

/// "gamma_0.3", "beta_2_3"
std::string name_of(const char* law, const std::vector<double>& shapes);

struct Moments {
  double mean, deviation;
};

/// Those of a law with its standard parameters, or null if it has none.
const Moments* moments_of(const std::string& law);

template <class T>
using Filler = std::function<void(int32_t n, T* r)>;

template <class T>
struct Contender {
  std::string name;  // "std/exponential"
  Filler<T> fill;
};

template <class T>
struct NamedContender {
  std::string law;
  Contender<T> contender;
};

/// The C++ library's and Boost's, each on its own MT19937. Integers are the C++ library's only.
template <class T>
std::vector<NamedContender<T>> distribution_peers();

}  // namespace orv_bench
