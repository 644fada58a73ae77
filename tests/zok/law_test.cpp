// SPDX-License-Identifier: MIT
// Every distribution against its law, with parameters in all branches of its methods and on their
// borders. ORV_LAW_DRAWS=1e9 makes a long run of it, ORV_LAW=gamma picks some.
#include <boost/math/special_functions/beta.hpp>

#include "law_support.hpp"

using namespace orv_test;

namespace {

using Function = std::function<double(double)>;

constexpr double pi = 3.14159265358979323846, euler = 0.57721566490153286;

/// Nothing below `a`, then what the functions tell of (x - a) / beta.
template <class T>
Law<T> above(std::string name, Draw<T> draw, double a, double beta, Function lower, Function upper,
             double mean, double deviation) {
  return {std::move(name),
          std::move(draw),
          [=](double x) { return x <= a ? 0 : lower((x - a) / beta); },
          [=](double x) { return x <= a ? 1 : upper((x - a) / beta); },
          a + beta * mean,
          beta * deviation};
}

template <class T>
Law<T> anywhere(std::string name, Draw<T> draw, double a, double beta, Function lower,
                Function upper, double mean, double deviation) {
  return {std::move(name),
          std::move(draw),
          [=](double x) { return lower((x - a) / beta); },
          [=](double x) { return upper((x - a) / beta); },
          a + beta * mean,
          beta * deviation};
}

template <class T>
std::string named(const char* name, std::initializer_list<T> parameters) {
  std::string text = name;
  char number[32];
  for (const T x : parameters) {
    snprintf(number, sizeof number, " %.9g", double{x});
    text += number;
  }
  return text;
}

template <class T>
Law<T> uniform_law(int32_t method) {
  return anywhere<T>(
      named<T>("uniform", {T(method)}), bound<T>(ORV_ENTRY(T, Uniform), method, 2, 5), 2, 3,
      [](double x) { return fmin(fmax(x, 0), 1); },
      [](double x) { return fmin(fmax(1 - x, 0), 1); }, 0.5, sqrt(1.0 / 12));
}

template <class T>
Law<T> exponential_law() {
  return above<T>(
      "exponential", bound<T>(ORV_ENTRY(T, Exponential), 0, 2, 3), 2, 3,
      [](double x) { return -expm1(-x); }, [](double x) { return exp(-x); }, 1, 1);
}

template <class T>
Law<T> laplace_law() {
  const auto lower = [](double x) { return x < 0 ? exp(x) / 2 : 1 - exp(-x) / 2; };
  return anywhere<T>(
      "laplace", bound<T>(ORV_ENTRY(T, Laplace), 0, 2, 3), 2, 3, lower,
      [=](double x) { return lower(-x); }, 0, sqrt(2));
}

template <class T>
Law<T> weibull_law(T alpha) {
  const double shape = alpha, mean = tgamma(1 + 1 / shape);
  return above<T>(
      named<T>("weibull", {alpha}), bound<T>(ORV_ENTRY(T, Weibull), 0, alpha, 0, 3), 0, 3,
      [=](double x) { return -expm1(-pow(x, shape)); },
      [=](double x) { return exp(-pow(x, shape)); }, mean,
      sqrt(tgamma(1 + 2 / shape) - mean * mean));
}

template <class T>
Law<T> rayleigh_law() {
  return above<T>(
      "rayleigh", bound<T>(ORV_ENTRY(T, Rayleigh), 0, 2, 3), 2, 3,
      [](double x) { return -expm1(-x * x); }, [](double x) { return exp(-x * x); }, sqrt(pi) / 2,
      sqrt(1 - pi / 4));
}

template <class T>
Law<T> cauchy_law() {
  const auto upper = [](double x) {
    return x > 0 ? atan(1 / x) / pi : 1 - (x < 0 ? atan(-1 / x) / pi : 0.5);
  };
  return anywhere<T>(
      "cauchy", bound<T>(ORV_ENTRY(T, Cauchy), 0, 2, 3), 2, 3, [=](double x) { return upper(-x); },
      upper, NAN, NAN);
}

template <class T>
Law<T> gumbel_law() {
  return anywhere<T>(
      "gumbel", bound<T>(ORV_ENTRY(T, Gumbel), 0, 2, 3), 2, 3,
      [](double x) { return -expm1(-exp(x)); }, [](double x) { return exp(-exp(x)); }, -euler,
      pi / sqrt(6));
}

double gaussian_upper(double z) { return erfc(z / sqrt(2)) / 2; }

template <class T>
Law<T> gaussian_law(int32_t method) {
  return anywhere<T>(
      named<T>("gaussian", {T(method)}), bound<T>(ORV_ENTRY(T, Gaussian), method, 2, 3), 2, 3,
      [](double x) { return gaussian_upper(-x); }, gaussian_upper, 0, 1);
}

template <class T>
Law<T> lognormal_law(T a, T sigma) {
  const double m = a, s = sigma;
  const bool moments = s < 1;  // else n numbers don't tell the deviation
  return above<T>(
      named<T>("lognormal", {a, sigma}), bound<T>(ORV_ENTRY(T, Lognormal), 0, a, sigma, 2, 3), 2, 3,
      [=](double x) { return gaussian_upper((m - log(x)) / s); },
      [=](double x) { return gaussian_upper((log(x) - m) / s); },
      moments ? exp(m + s * s / 2) : NAN, exp(m + s * s / 2) * sqrt(expm1(s * s)));
}

template <class T>
Law<T> gamma_law(T alpha) {
  const double shape = alpha;
  const double far = 50 * sqrt(shape), none = fmax(0, shape - far), all = shape + far + 1000;
  const auto clamped = [=](double x) { return fmin(fmax(x, none), all); };
  return above<T>(
      named<T>("gamma", {alpha}), bound<T>(ORV_ENTRY(T, Gamma), 0, alpha, 0, 1), 0, 1,
      [=](double x) { return boost::math::gamma_p(shape, clamped(x)); },
      [=](double x) { return boost::math::gamma_q(shape, clamped(x)); }, shape, sqrt(shape));
}

template <class T>
Law<T> beta_law(T p, T q) {
  const double a = p, b = q, sum = a + b;
  const bool moments = a > 0.1 && b > 0.1;  // else numbers other than 0 and 1 are rare
  return above<T>(
      named<T>("beta", {p, q}), bound<T>(ORV_ENTRY(T, Beta), 0, p, q, 0, 1), 0, 1,
      [=](double x) { return x >= 1 ? 1 : boost::math::ibeta(a, b, x); },
      [=](double x) { return x >= 1 ? 0 : boost::math::ibetac(a, b, x); }, moments ? a / sum : NAN,
      sqrt(a * b / (sum + 1)) / sum);
}

template <class T>
std::vector<Law<T>> continuous_laws() {
  std::vector<Law<T>> laws = {
      uniform_law<T>(0),      uniform_law<T>(RNG_ACCURATE),
      exponential_law<T>(),   laplace_law<T>(),
      rayleigh_law<T>(),      cauchy_law<T>(),
      gumbel_law<T>(),        lognormal_law<T>(T(0.5), T(0.25)),
      lognormal_law<T>(0, 2),
  };
  for (const int32_t method : {0, 1, 2}) laws.push_back(gaussian_law<T>(method));
  for (const double alpha : {0.2, 0.75, 1.0, 2.0, 2.5, 50.0}) {
    laws.push_back(weibull_law(static_cast<T>(alpha)));
  }
  const T six = T(0.6), one = 1;
  for (const T alpha :
       {T(0.01), T(0.3), std::nextafter(six, T(0)), six, T(0.8), std::nextafter(one, T(0)), one,
        std::nextafter(one, T(2)), T(2.5), T(20), T(1e4), T(1e7)}) {
    laws.push_back(gamma_law(alpha));
  }
  const double shapes[][2] = {
      {1, 1},           {1, 4},       {1, 0.25},    {1, 1e6},     {4, 1},       {0.25, 1},
      {1e6, 1},                                                                 // a shape of 1
      {0.3, 0.3},       {0.9, 0.2},   {0.05, 0.9},  {1e-3, 2e-3}, {1e-2, 0.5},  // Johnk
      {0.8, 0.9},       {0.99, 0.99}, {0.5, 0.8},   {0.9, 0.3},   {1e-6, 0.97}, {0.97, 0.14},
      {0.8, 2},         {2, 0.8},     {0.05, 1.01}, {0.99999, 5}, {0.5, 1e6},   {1e5, 0.7},
      {1.0001, 1.0002}, {1.5, 1.5},   {2, 3},       {20, 30},     {1.01, 300},  {499, 500},
      {500, 501},       {1e5, 3e5},   {5e5, 5e5},   {1e7, 1e7},
  };
  for (const auto& [p, q] : shapes) laws.push_back(beta_law(static_cast<T>(p), static_cast<T>(q)));
  if constexpr (sizeof(T) == 8) {
    laws.push_back(gamma_law(1e8));
    laws.push_back(beta_law(1e10, 1e10));
  }
  return laws;
}

template <class T>
class Laws : public testing::Test {};
using Types = testing::Types<double, float>;
TYPED_TEST_SUITE(Laws, Types);

TYPED_TEST(Laws, OfContinuousDistributions) {
  uint32_t seed = 20;
  for (const Law<TypeParam>& law : continuous_laws<TypeParam>()) {
    ++seed;
    if (is_chosen(law.name)) expect_law(law, Stream(BRNG_MT19937, {seed}));
  }
}

}  // namespace
