// SPDX-License-Identifier: MIT
// Negative binomial numbers: failures before the a-th success of probability p, a any number above
// 0. By a table of cumulative probabilities where the mode is below 100 and the table holds nearly
// all; else by rejection, under a plateau with exponential tails or, for a up to 1, where
// probabilities only fall and slower and slower, under a power with one such tail.
#include "../../../zok_sub_kernel/_service/chunk.hpp"
#include "../_service/hats.hpp"
#include "../_service/inversion.hpp"

using namespace orv;

namespace {

constexpr uint32_t chunk = 4;
constexpr double least_rejected_mode = 100;

struct Law {
  double a, p;

  double mode() const { return (a - 1) * (1 - p) / p; }
  double first() const { return kernels::exp(a * kernels::ln(p)); }
  /// f(k + 1) / f(k)
  double step(double k) const { return (1 - p) * (a + k) / (k + 1); }
  double ln_step(double k) const { return kernels::ln1p((a - 1 - p * (a + k)) / (k + 1)); }
};

// ---- A table, and the recurrence beyond it ------------------------------------------------------

/// Whether a walk beyond the table never comes, or is rare and short: there each probability is to
/// be more than 1 % below the last.
bool serves(double left, const Law& law) {
  const double slowest = law.a > 1 ? law.step(CumulativeTable::last) : 1 - law.p;
  return left <= 0 || (left <= 1.0 / 64 && slowest < 0.99);
}

/// On from the table's end to where u is passed, or nothing is added any more.
int32_t walk_on(const CumulativeTable& table, double u, const Law& law) {
  constexpr int32_t most = 10000;
  int32_t k = CumulativeTable::last - 1;
  double below = table[k], f = below - table[k - 1];
  while (k < most) {
    f = f * law.step(k++);
    const double sum = below + f;
    if (sum > u || !(sum > below)) break;
    below = sum;
  }
  return k;
}

int32_t by_table(StreamState* stream, int32_t n, int32_t* r, const Law& law,
                 const CumulativeTable& table) {
  return with_uniforms(stream, n, [&](int32_t count, const double* u) {
    for (int32_t i = 0; i < count; ++i) {
      const int32_t k = table.find(u[i]);
      r[i] = k < CumulativeTable::last ? k : walk_on(table, u[i], law);
    }
    r += count;
  });
}

// ---- A table and falling tail -------------------------------------------------------------------

/// For a up to 1, where f(k) = C gamma(k + a) / gamma(k + 1) q^k is below C y^(a-1) q^y for every y
/// from k - 1 to k: numbers up to 254 by the table, above it the next integer of a y that has the
/// density y^(a-1) up to b = -1 / ln q, and falls exponentially from there (after Ahrens and
/// Dieter 1974).
class FallingHat {
 public:
  void make(const Law& law, const CumulativeTable& table) {
    a_ = law.a;
    rate_ = -kernels::ln1p(-law.p);
    border_ = 1 / rate_ > start ? 1 / rate_ : start;
    const double ln_c = a_ * kernels::ln(law.p) - __zokdLGamma(a_);
    growth_ = kernels::expm1(a_ * kernels::ln(border_ / start));
    in_table_ = table[CumulativeTable::last - 1];
    power_area_ = kernels::exp(ln_c + a_ * kernels::ln(start)) / a_ * growth_;
    tail_area_ =
        kernels::exp(ln_c + (a_ - 1) * kernels::ln(border_) - rate_ * border_ - kernels::ln(rate_));
  }

  /// Decides on n pairs, in their order, and returns how many numbers it has made of them.
  int32_t numbers(int32_t n, const double* pairs, int32_t* r, const CumulativeTable& table) const {
    alignas(32) double u[hat_block], w[hat_block], y[hat_block];
    bool accepted[hat_block];
    int32_t beyond[hat_block], count = 0;
    split_pairs(n, pairs, u, w);
    for (int32_t k = 0; k < n; ++k) {
      u[k] = u[k] * (in_table_ + power_area_ + tail_area_);
      y[k] = table.find(u[k]);
      accepted[k] = true;
      beyond[count] = k;
      count += !(u[k] < in_table_);
    }
    decide(count, beyond, u, w, y, accepted);
    return append_accepted(
        n, r, [&](int32_t k) { return to_result(y[k]); }, [&](int32_t k) { return accepted[k]; });
  }

 private:
  static constexpr double start = CumulativeTable::last - 1;

  void decide(int32_t n, const int32_t* which, const double* u, const double* w, double* number,
              bool* accepted) const {
    alignas(32) double y[hat_block], ln_w[hat_block], x[hat_block], test[hat_block];
    const double power_end = in_table_ + power_area_;
    for (int32_t j = 0; j < n; ++j) {
      const double at = u[which[j]];
      ln_w[j] = w[which[j]];
      x[j] = at < power_end ? growth_ * ((at - in_table_) / power_area_)
                            : -((at - power_end) / tail_area_);
    }
    kernels::ln(n, ln_w, ln_w);
    kernels::ln1p(n, x, x);
    for (int32_t j = 0; j < n; ++j) y[j] = x[j] / a_;
    kernels::exp(n, y, y);
    for (int32_t j = 0; j < n; ++j) {
      const bool power = u[which[j]] < power_end;
      y[j] = power ? start * y[j] : border_ - x[j] / rate_;
      const double k = __builtin_ceil(y[j]);
      number[which[j]] = k;
      test[j] = power ? -rate_ * k : -rate_ * (k - y[j]);
      test[j] += a_ * (a_ - 1) / (2 * k);  // of the gamma functions' ratio to k^(a-1)
      x[j] = power ? k / y[j] : k / border_;
    }
    kernels::ln(n, x, x, Slot::ha);
    for (int32_t j = 0; j < n; ++j) accepted[which[j]] = ln_w[j] <= test[j] + (a_ - 1) * x[j];
  }

  double a_, rate_, border_, growth_;
  double in_table_, power_area_, tail_area_;
};

// ---- All methods --------------------------------------------------------------------------------

void make_plateau(const Law& law, Hat<Plateau, 2>* hat) {
  const auto [a, p] = law;
  const double m = __zokdFloor(law.mode()), deviation = __zokdSqrt(a * (1 - p)) / p;
  hat->mode = m;
  hat->least = 0;
  hat->most = __builtin_inf();
  hat->log_ratio = LogRatio<2>(law.ln_step(m), {{m + 1, 1, 1}, {m + a, 1, -1}});
  hat->put_plateau(__zokdFloor(1.5 * deviation) + 0.5, [&](double k) { return law.ln_step(k); });
  hat->fill_near([&](double k) { return law.step(k); });
}

enum class Method : int32_t { table, plateau, falling };

struct Record {
  Key<2> key;
  Method method;
  int32_t unused = 0;
  CumulativeTable table;
  Hat<Plateau, 2> plateau;
  FallingHat falling;
};

/// Makes what the law's method needs.
void prepare(const Law& law, Record* record) {
  const auto plateau = [&] {
    record->method = Method::plateau;
    make_plateau(law, &record->plateau);
  };
  if (law.mode() >= least_rejected_mode) return plateau();
  const double left = record->table.make_part(law.first(), [&](double k) { return law.step(k); });
  if (serves(left, law)) {
    record->method = Method::table;
  } else if (law.a > 1) {
    plateau();
  } else {
    record->method = Method::falling;
    record->falling.make(law, record->table);
  }
}

int32_t _zokRngNegbinomialNBAR(StreamState* stream, int32_t n, int32_t* r, const Law& law,
                               Record* record) {
  return by_rejection(stream, n, r, &record->plateau, {},
                      [&](auto* hat) { make_plateau(law, hat); });
}

int32_t by_falling_hat(StreamState* stream, int32_t n, int32_t* r, const Law& law, Record* record) {
  const auto numbers = [&](int32_t count, const double* pairs, int32_t* part) {
    return record->falling.numbers(count, pairs, part, record->table);
  };
  return by_rejection(stream, n, r, numbers, [&] { prepare(law, record); });
}

}  // namespace

int32_t _zokiRngNegbinomial(int32_t, StreamState* stream, int32_t n, int32_t* r, double a,
                            double p) {
  constexpr double all_saturate = 0x1p60;
  const Law law = {a, p};
  if (!(p >= __DBL_MIN__ && law.mode() < all_saturate)) return fill(n, r, most_int);
  Record* record;
  const int32_t status = find_or_add_record(stream, chunk, &record);
  if (status < 0) return status;
  if (record->key.holds(a, p) && record->method == Method::table) {
    return by_table(stream, n, r, law, record->table);
  }
  const QuietKernels quiet(_vLnOnlyCallBack<double>);  // exponentials may vanish
  if (!record->key.holds(a, p)) {
    record->key = {};
    prepare(law, record);
    record->key.hold(a, p);
  }
  switch (record->method) {
    case Method::table:
      return by_table(stream, n, r, law, record->table);
    case Method::plateau:
      return _zokRngNegbinomialNBAR(stream, n, r, law, record);
    default:
      return by_falling_hat(stream, n, r, law, record);
  }
}
