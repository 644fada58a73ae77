// SPDX-License-Identifier: MIT
// Poisson numbers: by a table of cumulative probabilities for means below 27, else by rejection
// (PTPE, Schmeiser and Kachitvichyanukul 1981); or from Gaussian numbers.
#include "../../../zok_sub_kernel/_service/chunk.hpp"
#include "../_service/hats.hpp"
#include "../_service/inversion.hpp"
#include "poisson_normal.hpp"

using namespace orv;

namespace {

constexpr uint32_t chunk = 3;
constexpr double least_rejected_mean = 27;

/// Each method keeps its own.
struct Record {
  Key<1> table_key, hat_key;
  CumulativeTable table;
  Hat<Mountain, 1> hat;
};

/// Published constants.
void make_hat(double lambda, Hat<Mountain, 1>* hat) {
  const double m = __zokdFloor(lambda);
  const double half_width = __zokdFloor(2.195 * __zokdSqrt(m) - 2.2) + 0.5;
  const double left = m + 0.5 - half_width, right = m + 0.5 + half_width;
  const double c = 0.133 + 8.56 / (lambda + 6.83), left_height = 0.109 + 8.25 / (lambda + 10.86);
  const double al = (lambda - left) / lambda, ar = (right - lambda) / right;
  const double f = m + 1;
  hat->mode = m;
  hat->least = 0;
  hat->most = __builtin_inf();
  hat->middle = Mountain(m, half_width, c);
  hat->tails =
      Tails(left, right, left_height, c, al * (1 + al / 2), ar * (1 + ar / 2), hat->middle.area);
  hat->log_ratio = LogRatio<1>(kernels::ln1p((lambda - f) / f), {{f, 1, 1}});
  hat->fill_near([&](double k) { return lambda / (k + 1); });
}

int32_t by_table(StreamState* stream, int32_t n, int32_t* r, double lambda, Record* record) {
  if (!record->table_key.holds(lambda)) {
    record->table_key = {};
    record->table.make([&](double k) { return lambda / (k + 1); });
    record->table_key.hold(lambda);
  }
  return by_inversion(stream, n, r, record->table, {});
}

int32_t by_hat(StreamState* stream, int32_t n, int32_t* r, double lambda, Record* record) {
  constexpr double all_saturate = 0x1p40;
  if (lambda > all_saturate) return fill(n, r, most_int);
  const QuietKernels quiet(_vLnCallBack<double>);
  const auto make = [&](auto* hat) { make_hat(lambda, hat); };
  if (!record->hat_key.holds(lambda)) {
    make(&record->hat);
    record->hat_key.hold(lambda);
  }
  return by_rejection(stream, n, r, &record->hat, {}, make);
}

int32_t _viRngPoissonPtpe(StreamState* stream, int32_t n, int32_t* r, double lambda) {
  Record* record;
  const int32_t status = find_or_add_record(stream, chunk, &record);
  if (status < 0) return status;
  const auto method = lambda >= least_rejected_mean ? by_hat : by_table;
  return method(stream, n, r, lambda, record);
}

// ---- From Gaussian numbers ----------------------------------------------------------------------

/// For means below 1, where E is the sum that a uniform is drawn below: the exponential function.
constexpr double __zok_iExp[] = {
    0.9999999978976929, 1.000000235204182,    0.49999555884885266,   0.16669916415448055,
    0.0415487961378904, 0.008565930750590653, 0.0011369805324212754, 0.0003351641595394528,
};

/// How many partial sums of the exponential series, 11 of them, a uniform lies above.
int32_t below_1(StreamState* stream, int32_t n, int32_t* r, double lambda) {
  constexpr int32_t sums = 11;
  float sum[sums];
  double partial = 1, term = 1, exp = 0;
  for (int32_t k = 0; k < sums; ++k) {
    sum[k] = static_cast<float>(partial);
    term = term * lambda / (k + 1);
    partial += term;
  }
  for (int32_t k = 7; k >= 0; --k) exp = __zok_iExp[k] + lambda * exp;

  constexpr int32_t block = 1024;
  alignas(32) float u[block];
  while (n > 0) {
    const int32_t count = n < block ? n : block;
    const int32_t status = _zoksRngUniform(0, stream, count, u, 0, static_cast<float>(exp));
    if (status < 0) return status;
    for (int32_t i = 0; i < count; ++i) {
      int32_t above = 0;
      for (int32_t k = 0; k < sums; ++k) above += u[i] > sum[k];
      r[i] = above;
    }
    r += count;
    n -= count;
  }
  return RNG_OK;
}

int32_t _viRngPoissonPoisNorm(StreamState* stream, int32_t n, int32_t* r, double lambda) {
  if (!(lambda >= 1) || lambda > __DBL_MAX__) return below_1(stream, n, r, lambda);
  const PoissonCurve curve(lambda);
  return with_gaussians(stream, n, [&](int32_t count, const float* g) {
    for (int32_t i = 0; i < count; ++i) r[i] = curve(g[i]);
    r += count;
  });
}

using Method = int32_t (*)(StreamState* stream, int32_t n, int32_t* r, double lambda);
constexpr Method methods[] = {_viRngPoissonPtpe, _viRngPoissonPoisNorm};

}  // namespace

int32_t _zokiRngPoisson(int32_t method, StreamState* stream, int32_t n, int32_t* r, double lambda) {
  return methods[method](stream, n, r, lambda);
}
