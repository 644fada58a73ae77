// SPDX-License-Identifier: MIT
// The distributions as tests call them: parameters bound, one form for all.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "stream_support.hpp"

namespace orv_test {

/// n numbers of a distribution with its parameters.
template <class T>
using Draw = std::function<int32_t(StreamState* stream, int32_t n, T* r)>;

template <class T>
struct NamedDraw {
  std::string name;
  Draw<T> draw;
};

/// Picks the precision's entry.
template <class T, class D, class S>
auto entry(D d, S s) {
  if constexpr (std::is_same_v<T, double>) {
    return d;
  } else {
    return s;
  }
}
#define ORV_ENTRY(T, name) orv_test::entry<T>(_zokdRng##name, _zoksRng##name)

/// An entry with its method and parameters.
template <class T, class Entry, class... Parameters>
Draw<T> bound(Entry entry, int32_t method, Parameters... parameters) {
  return [=](StreamState* stream, int32_t n, T* r) {
    return entry(method, stream, n, r, parameters...);
  };
}

/// Every continuous distribution, by each of its methods, and in all branches of those.
template <class T>
std::vector<NamedDraw<T>> continuous_draws() {
  std::vector<NamedDraw<T>> draws = {
      {"uniform", bound<T>(ORV_ENTRY(T, Uniform), 0, 1, 4)},
      {"exponential", bound<T>(ORV_ENTRY(T, Exponential), 0, 2, 3)},
      {"laplace", bound<T>(ORV_ENTRY(T, Laplace), 0, 2, 3)},
      {"weibull", bound<T>(ORV_ENTRY(T, Weibull), 0, T(2.5), 2, 3)},
      {"cauchy", bound<T>(ORV_ENTRY(T, Cauchy), 0, 2, 3)},
      {"rayleigh", bound<T>(ORV_ENTRY(T, Rayleigh), 0, 2, 3)},
      {"lognormal", bound<T>(ORV_ENTRY(T, Lognormal), 0, T(0.5), T(1.25), 2, 3)},
      {"gumbel", bound<T>(ORV_ENTRY(T, Gumbel), 0, 2, 3)},
      {"gaussian by sines", bound<T>(ORV_ENTRY(T, Gaussian), RNG_GAUSSIAN_BOXMULLER, 2, 3)},
      {"gaussian by pairs", bound<T>(ORV_ENTRY(T, Gaussian), RNG_GAUSSIAN_BOXMULLER2, 2, 3)},
      {"gaussian by inversion", bound<T>(ORV_ENTRY(T, Gaussian), RNG_GAUSSIAN_ICDF, 2, 3)},
  };
  for (const double alpha : {0.3, 0.8, 1.0, 2.5}) {
    draws.push_back({"gamma " + std::to_string(alpha),
                     bound<T>(ORV_ENTRY(T, Gamma), 0, static_cast<T>(alpha), 2, 3)});
  }
  const double shapes[][2] = {{0.8, 0.9}, {0.3, 0.3}, {0.8, 2}, {2, 0.8},     {2, 3},
                              {1, 3},     {3, 1},     {0.5, 1}, {1000, 2000}, {1e-3, 2e-3}};
  for (const auto& [p, q] : shapes) {
    draws.push_back({"beta " + std::to_string(p) + ' ' + std::to_string(q),
                     bound<T>(ORV_ENTRY(T, Beta), 0, static_cast<T>(p), static_cast<T>(q), 2, 3)});
  }
  return draws;
}

/// An integer distribution.
struct Discrete {
  enum Kind { inversion, rejection, gaussian };

  std::string name;
  Draw<int32_t> draw;
  Kind kind;          // inversion takes a double for a number, gaussian a float
  int32_t chunk = 0;  // where it keeps what it has made of its parameters
};

/// Every discrete distribution, by each of its methods.
inline std::vector<Discrete> discrete_draws() {
  using D = Discrete;
  using I = int32_t;
  return {
      {"bernoulli", bound<I>(_zokiRngBernoulli, 0, 0.3), D::gaussian},
      {"geometric", bound<I>(_zokiRngGeometric, 0, 0.3), D::inversion},
      {"uniform", bound<I>(_zokiRngUniform, 0, -3, 1000), D::inversion},
      {"binomial by table", bound<I>(_zokiRngBinomial, 0, 40, 0.6), D::inversion, 5},
      {"binomial", bound<I>(_zokiRngBinomial, 0, 400000, 0.3), D::rejection, 5},
      {"poisson by table", bound<I>(_zokiRngPoisson, 0, 5.5), D::inversion, 3},
      {"poisson", bound<I>(_zokiRngPoisson, 0, 1234.5), D::rejection, 3},
      {"poisson below 1", bound<I>(_zokiRngPoisson, 1, 0.5), D::gaussian},
      {"poisson by rows", bound<I>(_zokiRngPoisson, 1, 20.5), D::gaussian},
      {"poisson by expansion", bound<I>(_zokiRngPoisson, 1, 1e5), D::gaussian},
      {"poisson of a vector",
       [](StreamState* stream, int32_t n, int32_t* r) {
         const std::vector<double> lambda(n > 0 ? n : 0, 7.5);
         return _zokiRngPoissonV(0, stream, n, r, lambda.data());
       },
       D::gaussian},
      {"hypergeometric by table", bound<I>(_zokiRngHypergeometric, 0, 100, 60, 30), D::inversion,
       6},
      {"hypergeometric", bound<I>(_zokiRngHypergeometric, 0, 100000, 60000, 3000), D::rejection, 6},
      {"negative binomial by table", bound<I>(_zokiRngNegbinomial, 0, 2.5, 0.1), D::inversion, 4},
      {"negative binomial", bound<I>(_zokiRngNegbinomial, 0, 20.5, 0.01), D::rejection, 4},
      {"negative binomial, falling", bound<I>(_zokiRngNegbinomial, 0, 0.5, 1e-4), D::rejection, 4},
  };
}

/// A stream of the user's numbers: `numbers` over and over, which lie in [0, 1].
template <class T>
class Given {
 public:
  explicit Given(std::vector<T> numbers) : buffer_(std::move(numbers)) {
    const auto n = static_cast<int32_t>(buffer_.size());
    if constexpr (std::is_same_v<T, double>) {
      EXPECT_EQ(__zokdNewAbstractStream(&stream_, n, buffer_.data(), 0, 1, again), RNG_OK);
    } else {
      EXPECT_EQ(__zoksNewAbstractStream(&stream_, n, buffer_.data(), 0, 1, again), RNG_OK);
    }
  }
  operator StreamState*() const { return stream_; }

 private:
  /// What the buffer holds is what it held.
  static int32_t again(StreamState*, int32_t*, T*, int32_t*, int32_t* nmax, int32_t*) {
    return *nmax;
  }

  std::vector<T> buffer_;
  Stream stream_;
};

}  // namespace orv_test
