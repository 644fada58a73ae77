// SPDX-License-Identifier: MIT
// Normal data of p variables have distances d with d^2 chi-square of p degrees of freedom. M and c
// are such that the mean of rho(d) is the part b of its largest value.
#include "biweight.hpp"

#include <orv/scalar.h>

#include "../../../zok_sub_kernel/_math/incomplete_gamma.hpp"

namespace orv {
inline namespace ORV_TAG {
namespace {

constexpr int most_rounds = 100;
constexpr double close = 0.0001;

double size(double x) { return __builtin_fabs(x); }
double root(double x) { return __builtin_sqrt(x); }

double above(double p, double distance) { return 1 - __zokdChi2CDF(p, distance * distance); }
double square_below(double p, double distance) {  // the mean of d^2 where d is below
  return p * __zokdChi2CDF(p + 2, distance * distance);
}
double density(double p, double d) { return 2 * d * __zokdChi2PDF(p, d * d); }

/// Where Huber's min(d, r)^2 has the mean b r^2.
double first_radius(double p, double b) {
  double r = 2 * p;
  for (int round = 0; round < most_rounds; ++round) {
    const double A = r * (above(p, r) - b);
    const double g = r * A + square_below(p, r);
    if (!(size(g) > close)) break;
    const double slope =
        2 * A + 2 * r * p * __zokdChi2PDF(p + 2, r * r) - 2 * (r * r * r) * __zokdChi2PDF(p, r * r);
    const double next = r - g / slope;
    r = slope == 0 || next < 0 ? r / 2 : next;
  }
  return r;
}

/// rho(d) from M to M + c, in powers of s = d - M: those of d cancel.
double rho_between(const Biweight& w, double s) {
  const double t = s / w.c, t2 = t * t;
  const double linear = w.M * s * (1 + t2 * (-2 / 3.0 + t2 / 5));
  const double square = s * s * (0.5 + t2 * (-0.5 + t2 / 6));
  return 0.5 * (w.M * w.M) + linear + square;
}

double largest_rho(const Biweight& w) {
  return (0.5 * w.M + (8 / 15.0) * w.c) * w.M + (1 / 6.0) * (w.c * w.c);
}

/// Gauss and Legendre's rule of 16 points for f over [low, low + width].
template <class Function>
double integral(double low, double width, Function f) {
  static constexpr double node[] = {0.09501250983763744, 0.2816035507792589, 0.45801677765722737,
                                    0.6178762444026438,  0.755404408355003,  0.8656312023878318,
                                    0.9445750230732326,  0.9894009349916499};
  static constexpr double weight[] = {
      0.1894506104550685,  0.18260341504492358, 0.16915651939500254,  0.14959598881657674,
      0.12462897125553388, 0.09515851168249279, 0.062253523938647894, 0.027152459411754096};
  const double middle = low + 0.5 * width;
  double sum = 0;
  for (int k = 0; k < 8; ++k) {
    const double step = 0.5 * width * node[k];
    sum += weight[k] * (f(middle - step) + f(middle + step));
  }
  return 0.5 * width * sum;
}

/// The mean of rho(d).
double _vSSTBSMeanRho(double p, const Biweight& w) {
  constexpr double most_panels = 64;  // the density is a hill less than one wide
  const double c = w.c > 0 ? w.c : 0;
  double sum = 0.5 * square_below(p, w.M) + largest_rho({w.M, c}) * above(p, w.M + c);
  const double panels = c < most_panels ? __builtin_ceil(c) : most_panels;
  for (double k = 0; k < panels; ++k) {
    sum += integral(w.M + k * (c / panels), c / panels,
                    [&](double d) { return rho_between(w, d - w.M) * density(p, d); });
  }
  return sum;
}

/// Newton's method along M + c = q.
Biweight translated(double p, double b, double q) {
  constexpr double h = 0.0001;
  double M = root(p);
  for (int round = 0; round < most_rounds; ++round) {
    const double c = q - M, mean = _vSSTBSMeanRho(p, {M, c});
    const double f = mean - b * largest_rho({M, c});
    const double by_M = (_vSSTBSMeanRho(p, {M + h, c}) - mean) / h;
    const double by_c = (_vSSTBSMeanRho(p, {M, c + h}) - mean) / h;
    double next = M - f / (by_M - ((7 / 15.0) * M + 0.2 * c) * b - by_c);
    if (!(next < q && next > 0)) next = (M + q) * 0.5;
    M = next;
    if (size(f) <= close) return {M, q - M};
  }
  return {q, 0};
}

}  // namespace

Biweight _vSSInitTBSMethod(int64_t dimension, double b, double a) {
  const auto p = static_cast<double>(dimension);
  const double q = root(2 * _dinvQ(0.5 * p, a));
  return a >= above(p, first_radius(p, b)) ? Biweight{q, 0} : translated(p, b, q);
}

}  // namespace ORV_TAG
}  // namespace orv
