// Laws that are timed, and other libraries' numbers of them.
#pragma once

#include <stdint.h>

#include <functional>
#include <string>
#include <vector>

namespace orv_bench {

inline constexpr double gamma_shapes[] = {0.3, 0.8, 1, 2.5, 20};
inline constexpr double beta_shapes[][2] = {{0.3, 0.3}, {0.8, 2}, {2, 3}, {20, 30}};

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

/// The C++ library's and Boost's, each on its own MT19937.
template <class T>
std::vector<NamedContender<T>> distribution_peers();

}  // namespace orv_bench
