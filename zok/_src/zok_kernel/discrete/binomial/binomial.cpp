// SPDX-License-Identifier: MIT
// Binomial numbers, made for the rarer outcome and turned over for the other: by a table of
// cumulative probabilities where the mean of the rarer is below 30, else by rejection (BTPE,
// Kachitvichyanukul and Schmeiser 1988).
#include "../../../zok_sub_kernel/_service/chunk.hpp"
#include "../_service/hats.hpp"
#include "../_service/inversion.hpp"

using namespace orv;

namespace {

constexpr uint32_t chunk = 5;
constexpr double least_rejected_mean = 30;

struct Record {
  Key<2> key;
  CumulativeTable table;
  Hat<Mountain, 2> hat;
};

struct Law {
  double n, p;

  double odds() const { return p / (1 - p); }
  /// f(k + 1) / f(k)
  double step(double k) const { return (n - k) / (k + 1) * odds(); }
};

/// Published constants; `c` of the left tail and of the right one are the same.
void make_hat(const Law& law, Hat<Mountain, 2>* hat) {
  const auto [n, p] = law;
  const double q = 1 - p, deviation = __zokdSqrt(n * p * q), peak = n * p + p;
  const double m = __zokdFloor(peak), c = 0.134 + 20.5 / (15.3 + m);
  const double half_width = __zokdFloor(2.195 * deviation - 4.6 * q) + 0.5;
  const double left = m + 0.5 - half_width, right = m + 0.5 + half_width;
  const double al = (peak - left) / (peak - left * p), ar = (right - peak) / (right * q);
  const double f = m + 1, g = n - m + 1;
  hat->mode = m;
  hat->least = 0;
  hat->most = n;
  hat->middle = Mountain(m, half_width, c);
  hat->tails = Tails(left, right, c, c, al * (1 + al / 2), ar * (1 + ar / 2), hat->middle.area);
  hat->log_ratio = LogRatio<2>(kernels::ln1p((g * p - f * q) / (f * q)), {{f, 1, 1}, {g, -1, 1}});
  hat->fill_near([&](double k) { return law.step(k); });
}

int32_t _zokiRngBinomialCDF(StreamState* stream, int32_t n, int32_t* r, const Law& law,
                            const Image& image, Record* record) {
  if (!record->key.holds(law.n, law.p)) {
    record->key = {};
    record->table.make([&](double k) { return law.step(k); });
    record->key.hold(law.n, law.p);
  }
  return by_inversion(stream, n, r, record->table, image);
}

int32_t _zokiRngBinomialBTPE(StreamState* stream, int32_t n, int32_t* r, const Law& law,
                             const Image& image, Record* record) {
  const QuietKernels quiet(_vLnCallBack<double>);
  const auto make = [&](auto* hat) { make_hat(law, hat); };
  if (!record->key.holds(law.n, law.p)) {
    make(&record->hat);
    record->key.hold(law.n, law.p);
  }
  return by_rejection(stream, n, r, &record->hat, image, make);
}

}  // namespace

int32_t _zokiRngBinomial(int32_t, StreamState* stream, int32_t n, int32_t* r, int32_t ntrial,
                         double p) {
  Record* record;
  const int32_t status = find_or_add_record(stream, chunk, &record);
  if (status < 0) return status;
  const bool turned = p >= 0.5;
  const Law law = {static_cast<double>(ntrial), turned ? 1 - p : p};
  const Image image = turned ? Image{ntrial, -1} : Image{};
  const auto method =
      law.n * law.p >= least_rejected_mean ? _zokiRngBinomialBTPE : _zokiRngBinomialCDF;
  return method(stream, n, r, law, image, record);
}
