// SPDX-License-Identifier: MIT
// Distributions as small objects, and sample(), which draws from them.
//
//     orv::sample(s, orv::gamma{.shape = 2.5}, y);             // y of doubles or floats
//     auto counts = orv::sample(s, orv::poisson{4}, 1000);     // std::vector<int32_t>
//     double x = orv::sample(s, orv::normal{});
//
// Parameters are checked when numbers are drawn. docs/random.md has laws, methods and costs.
#pragma once

#include <orv/math.hpp>
#include <orv/stream.hpp>

namespace orv {

namespace detail {

/// Parameters are checked as the library gets them: those of float numbers as floats.
[[noreturn, gnu::cold]] inline void fail_parameter(const char* law, const char* parameter, double x,
                                                   const char* allowed) {
  fail(RNG_BAD_ARGS, law, std::string(parameter) + " is " + text(x) + "; it has to be " + allowed);
}
template <class R>
bool is_finite(R x) {
  return x - x == 0;
}
template <class R>
R number(const char* law, const char* parameter, double x) {
  const R r = static_cast<R>(x);
  if (!is_finite(r)) [[unlikely]]
    fail_parameter(law, parameter, x, "finite");
  return r;
}
template <class R>
R above_0(const char* law, const char* parameter, double x) {
  const R r = static_cast<R>(x);
  if (!(r > 0) || !is_finite(r)) [[unlikely]] {
    fail_parameter(law, parameter, x, "finite and above 0");
  }
  return r;
}
inline double probability(const char* law, double p, bool with_0) {
  if (!(p <= 1) || !(with_0 ? p >= 0 : p > 0)) [[unlikely]] {
    fail_parameter(law, "p", p, with_0 ? "from 0 to 1" : "above 0, to 1");
  }
  return p;
}
inline int32_t count_of(const char* law, const char* parameter, int32_t x, int32_t most) {
  if (x < 0 || x > most) [[unlikely]] {
    fail(RNG_BAD_ARGS, law,
         std::string(parameter) + " is " + std::to_string(x) + "; it has to be from 0 to " +
             std::to_string(most));
  }
  return x;
}

/// A law's entry of either precision.
template <class R, class D, class S>
constexpr auto entry_of(D in_double, S in_float) {
  if constexpr (std::is_same_v<R, double>) {
    return in_double;
  } else {
    return in_float;
  }
}

/// An entry with its parameters.
template <class Entry, class... P>
auto bound(Entry entry, int32_t method, P... parameters) {
  return [=](StreamState* s, int32_t count, auto* r) {
    return entry(method, s, count, r, parameters...);
  };
}

}  // namespace detail

// Each has bind<R>(): parameters checked, it returns what draws count numbers into r.
// ----------------

/// Uniform on [low, high), up to rounding; `accurate` keeps each number in [low, high].
struct uniform {
  double low = 0, high = 1;
  bool accurate = false;
  static constexpr const char* name = "uniform";
  using result_type = double;
  template <class R>
  auto bind() const {
    const R a = detail::number<R>(name, "low", low), b = detail::number<R>(name, "high", high);
    if (!(a < b)) detail::fail_parameter(name, "high", high, "above low");
    const int32_t method = accurate ? RNG_ACCURATE : 0;
    return detail::bound(detail::entry_of<R>(_zokdRngUniform, _zoksRngUniform), method, a, b);
  }
};

/// How normal numbers are made.
enum class normal_method {
  box_muller = RNG_GAUSSIAN_BOXMULLER,
  box_muller_pairs = RNG_GAUSSIAN_BOXMULLER2,
  inversion = RNG_GAUSSIAN_ICDF
};

struct normal {
  double mean = 0, sd = 1;
  normal_method method = normal_method::inversion;
  static constexpr const char* name = "normal";
  using result_type = double;
  template <class R>
  auto bind() const {
    const R a = detail::number<R>(name, "mean", mean), b = detail::above_0<R>(name, "sd", sd);
    const auto how = static_cast<int32_t>(method);
    return detail::bound(detail::entry_of<R>(_zokdRngGaussian, _zoksRngGaussian), how, a, b);
  }
};

// Laws with a place and a scale: place + scale X.
#define ORV_PLACE_SCALE(law, Entry, place, first, second)                                   \
  struct law {                                                                              \
    double first, second;                                                                   \
    static constexpr const char* name = #law;                                               \
    using result_type = double;                                                             \
    template <class R>                                                                      \
    auto bind() const {                                                                     \
      const R a = detail::number<R>(name, #place, place);                                   \
      const R b = detail::above_0<R>(name, "scale", scale);                                 \
      return detail::bound(detail::entry_of<R>(_zokdRng##Entry, _zoksRng##Entry), 0, a, b); \
    }                                                                                       \
  };
/// X with density e^-x from 0 on.
ORV_PLACE_SCALE(exponential, Exponential, shift, scale = 1, shift = 0)
/// X with density 2 x e^(-x^2) from 0 on.
ORV_PLACE_SCALE(rayleigh, Rayleigh, shift, scale = 1, shift = 0)
/// X with density e^-|x| / 2.
ORV_PLACE_SCALE(laplace, Laplace, location, location = 0, scale = 1)
/// X with density 1 / (pi (1 + x^2)).
ORV_PLACE_SCALE(cauchy, Cauchy, location, location = 0, scale = 1)
/// X the logarithm of an exponential number: a law of minima.
ORV_PLACE_SCALE(gumbel, Gumbel, location, location = 0, scale = 1)
#undef ORV_PLACE_SCALE

// Laws with a shape: shift + scale X.
#define ORV_SHAPE(law, Entry)                                                                      \
  struct law {                                                                                     \
    double shape, scale = 1, shift = 0;                                                            \
    static constexpr const char* name = #law;                                                      \
    using result_type = double;                                                                    \
    template <class R>                                                                             \
    auto bind() const {                                                                            \
      const R alpha = detail::above_0<R>(name, "shape", shape);                                    \
      const R a = detail::number<R>(name, "shift", shift);                                         \
      const R b = detail::above_0<R>(name, "scale", scale);                                        \
      return detail::bound(detail::entry_of<R>(_zokdRng##Entry, _zoksRng##Entry), 0, alpha, a, b); \
    }                                                                                              \
  };
/// X with density shape x^(shape-1) e^(-x^shape) from 0 on.
ORV_SHAPE(weibull, Weibull)
/// X with density x^(shape-1) e^-x / Gamma(shape) from 0 on.
ORV_SHAPE(gamma, Gamma)
#undef ORV_SHAPE

/// shift + scale e^X, X normal with mean and sd.
struct lognormal {
  double mean = 0, sd = 1, shift = 0, scale = 1;
  static constexpr const char* name = "lognormal";
  using result_type = double;
  template <class R>
  auto bind() const {
    const R m = detail::number<R>(name, "mean", mean), d = detail::above_0<R>(name, "sd", sd);
    const R a = detail::number<R>(name, "shift", shift);
    const R b = detail::above_0<R>(name, "scale", scale);
    return detail::bound(detail::entry_of<R>(_zokdRngLognormal, _zoksRngLognormal), 0, m, d, a, b);
  }
};

/// shift + scale X, X on [0, 1] with density x^(p-1) (1-x)^(q-1) / B(p, q).
struct beta {
  double p, q, shift = 0, scale = 1;
  static constexpr const char* name = "beta";
  using result_type = double;
  template <class R>
  auto bind() const {
    const R first = detail::above_0<R>(name, "p", p), second = detail::above_0<R>(name, "q", q);
    const R a = detail::number<R>(name, "shift", shift);
    const R b = detail::above_0<R>(name, "scale", scale);
    return detail::bound(detail::entry_of<R>(_zokdRngBeta, _zoksRngBeta), 0, first, second, a, b);
  }
};

// ---- Whole numbers ------------------------------------------------------------------------------

/// Uniform on low, ..., high - 1. `high` itself comes with a probability of 2^-23 at most, see
/// _zokiRngUniform.
struct uniform_int {
  int32_t low, high;
  static constexpr const char* name = "uniform_int";
  using result_type = int32_t;
  template <class R>
  auto bind() const {
    if (low >= high) detail::fail_parameter(name, "high", high, "above low");
    return detail::bound(_zokiRngUniform, 0, low, high);
  }
};

/// 1 with probability p, else 0.
struct bernoulli {
  double p;
  static constexpr const char* name = "bernoulli";
  using result_type = int32_t;
  template <class R>
  auto bind() const {
    return detail::bound(_zokiRngBernoulli, 0, detail::probability(name, p, true));
  }
};

/// Failures before the first success, trials having probability p.
struct geometric {
  double p;
  static constexpr const char* name = "geometric";
  using result_type = int32_t;
  template <class R>
  auto bind() const {
    return detail::bound(_zokiRngGeometric, 0, detail::probability(name, p, false));
  }
};

/// Successes in trials of probability p.
struct binomial {
  int32_t trials;
  double p;
  static constexpr const char* name = "binomial";
  using result_type = int32_t;
  template <class R>
  auto bind() const {
    const int32_t m = detail::count_of(name, "trials", trials, INT32_MAX);
    return detail::bound(_zokiRngBinomial, 0, m, detail::probability(name, p, true));
  }
};

/// Failures before that many successes, which need not be a whole number.
struct negative_binomial {
  double successes, p;
  static constexpr const char* name = "negative_binomial";
  using result_type = int32_t;
  template <class R>
  auto bind() const {
    const double a = detail::above_0<double>(name, "successes", successes);
    return detail::bound(_zokiRngNegbinomial, 0, a, detail::probability(name, p, false));
  }
};

/// Marked ones in a sample from a lot.
struct hypergeometric {
  int32_t lot, sample, marked;
  static constexpr const char* name = "hypergeometric";
  using result_type = int32_t;
  template <class R>
  auto bind() const {
    const int32_t l = detail::count_of(name, "lot", lot, INT32_MAX);
    const int32_t k = detail::count_of(name, "sample", sample, l);
    const int32_t m = detail::count_of(name, "marked", marked, l);
    return detail::bound(_zokiRngHypergeometric, 0, l, k, m);
  }
};

/// Events where the mean is expected. `from_normal` is faster and nearly exact.
struct poisson {
  double mean;
  bool from_normal = false;
  static constexpr const char* name = "poisson";
  using result_type = int32_t;
  template <class R>
  auto bind() const {
    if (!(mean > 0) || mean > 2e9) {
      detail::fail_parameter(name, "mean", mean, "above 0, to 2000000000");
    }
    const int32_t method = from_normal ? RNG_POISSON_POISNORM : RNG_POISSON_PTPE;
    return detail::bound(_zokiRngPoisson, method, mean);
  }
};

// ---- Drawing ------------------------------------------------------------------------------------

/// Fills y, of floats or doubles for a continuous law, of int32_t for the others.
template <class Law, detail::sequence Y>
requires requires { Law::name; }
void sample(stream& s, const Law& law, Y&& y) {
  using R = detail::element_of<Y>;
  constexpr bool is_whole = std::is_same_v<typename Law::result_type, int32_t>;
  static_assert(
      is_whole ? std::is_same_v<R, int32_t> : std::is_same_v<R, float> || std::is_same_v<R, double>,
      "the law has numbers of another type");
  static_assert(detail::is_writable<Y>, "numbers can't be stored in constant elements");
  const auto draw = law.template bind<R>();
  R* const r = std::data(y);
  s.in_parts(
      std::size(y), [&](size_t first, int32_t n) { return draw(s.get(), n, r + first); },
      Law::name);
}
template <class Law>
std::vector<typename Law::result_type> sample(stream& s, const Law& law, size_t n) {
  std::vector<typename Law::result_type> y(n);
  sample(s, law, y);
  return y;
}
template <class Law>
typename Law::result_type sample(stream& s, const Law& law) {
  typename Law::result_type x;
  sample(s, law, std::span(&x, 1));
  return x;
}

/// Numbers with a mean each, see _zokiRngPoissonV.
struct poisson_each {
  std::span<const double> means;
};
inline void sample(stream& s, const poisson_each& law, std::span<int32_t> y) {
  constexpr const char* name = "poisson_each";
  detail::check_size(name, "the result", y.size(), law.means.size());
  for (const double mean : law.means) {
    if (!(mean > 0) || mean > 2e9) {
      detail::fail_parameter(name, "a mean", mean, "above 0, to 2000000000");
    }
  }
  s.in_parts(
      y.size(),
      [&](size_t first, int32_t n) {
        return _zokiRngPoissonV(0, s.get(), n, y.data() + first, law.means.data() + first);
      },
      name);
}

/// Vectors with a mean and a covariance T T', T being a lower triangular factor, row by row; above
/// its diagonal nothing is read.
template <class R>
struct multivariate_normal {
  std::span<const R> mean, factor;
  normal_method method = normal_method::inversion;
};
template <class R>
void sample(stream& s, const multivariate_normal<R>& law, std::span<std::type_identity_t<R>> y) {
  constexpr const char* name = "multivariate_normal";
  const size_t p = law.mean.size();
  if (p == 0 || p > INT32_MAX)
    detail::fail(RNG_BAD_ARGS, name, "the mean has no elements, or too many");
  detail::check_size(name, "the factor", law.factor.size(), p * p);
  if (y.size() % p != 0) {
    detail::fail(RNG_BAD_ARGS, name,
                 "the result has " + std::to_string(y.size()) +
                     " elements; it needs a multiple of " + std::to_string(p));
  }
  s.in_parts(
      y.size() / p,
      [&](size_t first, int32_t n) {
        return detail::entry_of<R>(_zokdRngGaussianMV, _zoksRngGaussianMV)(
            static_cast<int32_t>(law.method), s.get(), n, y.data() + first * p,
            static_cast<int32_t>(p), RNG_STORAGE_FULL, law.mean.data(), law.factor.data());
      },
      name);
}

}  // namespace orv
