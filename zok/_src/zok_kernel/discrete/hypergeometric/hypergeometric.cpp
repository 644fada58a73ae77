// SPDX-License-Identifier: MIT
// Hypergeometric numbers: how many of `m` marked ones of a lot of `l` a sample of `s` holds. Made
// for the smaller of sample and rest, of marked and unmarked: by a table of cumulative
// probabilities where the mode is below 40, else by rejection (H2PE, Kachitvichyanukul and
// Schmeiser 1985).
#include "../../../zok_sub_kernel/_service/chunk.hpp"
#include "../_service/hats.hpp"
#include "../_service/inversion.hpp"

using namespace orv;

namespace {

constexpr uint32_t chunk = 6;
constexpr double least_rejected_mode = 40;

struct Record {
  Key<3> key;
  CumulativeTable table;
  Hat<Plateau, 4> hat;
};

/// A sample of at most half of the lot, and the rarer and the more frequent kind.
struct Law {
  double lot, sample, rarer, other;

  double mode() const { return __zokdFloor((rarer + 1) * (sample + 1) / (lot + 2)); }
  double most() const { return rarer < sample ? rarer : sample; }
  /// f(k + 1) / f(k)
  double step(double k) const {
    return (rarer - k) * (sample - k) / ((k + 1) * (other - sample + k + 1));
  }
};

Law folded(int32_t l, int32_t s, int32_t m) {
  const double lot = l, sample = s, marked = m, rest = lot - marked;
  const bool small = lot > 2 * sample, rare = marked <= rest;
  return {lot, small ? sample : lot - sample, rare ? marked : rest, rare ? rest : marked};
}

/// From a number of the rarer kind in the smaller part back to what was asked for.
Image unfolded(int32_t l, int32_t s, int32_t m) {
  const bool small = l - s > s, rare = m <= l - m;
  if (small) return rare ? Image{} : Image{s, -1};
  return rare ? Image{m, -1} : Image{s - (l - m), 1};
}

void make_hat(const Law& law, Hat<Plateau, 4>* hat) {
  const auto [lot, sample, rarer, other] = law;
  const double share = rarer / lot, m = law.mode();
  const double variance = sample * share * (1 - share) * ((lot - sample) / (lot - 1));
  const double f[] = {m + 1, rarer - m + 1, sample - m + 1, other - sample + m + 1};
  const double up = f[1] * f[2], down = f[0] * f[3];
  hat->mode = m;
  hat->least = 0;
  hat->most = law.most();
  hat->log_ratio = LogRatio<4>(kernels::ln1p((up - down) / down),
                               {{f[0], 1, 1}, {f[1], -1, 1}, {f[2], -1, 1}, {f[3], 1, 1}});
  hat->put_plateau(__zokdFloor(1.5 * __zokdSqrt(variance)) + 0.5,
                   [&](double k) { return __zokdLn(law.step(k)); });
  hat->fill_near([&](double k) { return law.step(k); });
}

/// The record of the parameters. Where others come, all that hangs on the stream goes.
int32_t prepare(StreamState* stream, const Law& law, const Key<3>& key, Record** found) {
  Record*& record = *found;
  record = find_record<Record>(stream, chunk);
  const auto [l, s, m] = key.is;
  if (record != nullptr && record->key.holds(l, s, m)) return RNG_OK;
  if (record != nullptr) __zokDeleteChunks(stream);
  const int32_t status = find_or_add_record(stream, chunk, &record);
  if (status < 0) return status;
  if (law.mode() >= least_rejected_mode) {
    const QuietKernels quiet;
    make_hat(law, &record->hat);
  } else {
    record->table.make([&](double k) { return law.step(k); });
  }
  record->key = key;
  return RNG_OK;
}

}  // namespace

int32_t _zokiRngHypergeometric(int32_t, StreamState* stream, int32_t n, int32_t* r, int32_t l,
                               int32_t s, int32_t m) {
  const Law law = folded(l, s, m);
  const Image image = unfolded(l, s, m);
  if (!(law.most() > 0)) return fill(n, r, image(0));
  Key<3> key;
  key.hold(l, s, m);
  Record* record;
  const int32_t status = prepare(stream, law, key, &record);
  if (status < 0) return status;
  if (law.mode() < least_rejected_mode) return by_inversion(stream, n, r, record->table, image);
  const QuietKernels quiet(_vLnCallBack<double>);
  return by_rejection(stream, n, r, &record->hat, image, [&](auto* hat) { make_hat(law, hat); });
}
