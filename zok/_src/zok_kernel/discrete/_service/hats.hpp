// SPDX-License-Identifier: MIT
// Rejection for integer laws with one mode: a hat of a middle part and two exponential tails. What
// lies under it is accepted by the probability's ratio to that of the mode, which stands in a table
// near the mode and is computed elsewhere.
#pragma once

#include "../../../zok_sub_kernel/_service/quiet_kernels.hpp"
#include "../../continuous/_service/ln_callback.hpp"
#include "../../continuous/_service/pairs.hpp"
#include "../../continuous/_service/rejection.hpp"
#include "log_ratio.hpp"
#include "results.hpp"

namespace orv {
inline namespace ORV_TAG {

inline constexpr int32_t hat_block = 512;

/// A block's candidates. Those that are open wait for a test: number y is accepted if v is not
/// above its ratio.
struct Candidates {
  alignas(32) double u[hat_block], w[hat_block];  // the uniforms, u scaled to the hat's area
  alignas(32) double y[hat_block], v[hat_block];
  int32_t open[hat_block], open_count;
  bool accepted[hat_block];

  /// Takes a pair of uniforms each.
  void begin(int32_t n, const double* pairs, double area) {
    split_pairs(n, pairs, u, w);
    for (int32_t k = 0; k < n; ++k) u[k] = u[k] * area;
  }
};

/// The exponential tails, whose areas follow that of the middle.
struct Tails {
  double left_end, right_end, left_rate, right_rate;
  double from, border, area;  // where the left one's area begins, the right one's, and the end

  Tails() = default;
  /// Of heights beside the middle's 1.
  Tails(double left, double right, double left_height, double right_height, double rate_left,
        double rate_right, double middle)
      : left_end(left),
        right_end(right),
        left_rate(rate_left),
        right_rate(rate_right),
        from(middle),
        border(middle + (left_height > 0 ? left_height / rate_left : 0)),
        area(border + right_height / rate_right) {}

  /// Makes candidates of the n that `which` names.
  void propose(int32_t n, const int32_t* which, Candidates& c) const {
    alignas(32) double ln[hat_block];
    for (int32_t j = 0; j < n; ++j) ln[j] = c.w[which[j]];
    kernels::ln(n, ln, ln);
    for (int32_t j = 0; j < n; ++j) {
      const int32_t k = which[j];
      const bool left = c.u[k] <= border;
      const double rate = left ? left_rate : right_rate;
      c.y[k] = __builtin_floor(left ? left_end + ln[j] / rate : right_end - ln[j] / rate);
      c.v[k] = c.w[k] * ((c.u[k] - (left ? from : border)) * rate);
    }
  }
};

/// A triangle, all of which lies below the law, and a parallelogram upon each of its slopes
/// (Kachitvichyanukul and Schmeiser 1988, and 1981 for Poisson).
struct Mountain {
  double mode, half_width, slope, triangle, area;

  Mountain() = default;
  /// The slope is the height of the parallelogram's ends.
  Mountain(double m, double p1, double c)
      : mode(m), half_width(p1), slope(c), triangle(p1), area(p1 * (1 + 2 * c)) {}

  double left() const { return mode + 0.5 - half_width; }
  double right() const { return mode + 0.5 + half_width; }

  void propose(int32_t n, Candidates& c) const {
    c.open_count = 0;
    for (int32_t k = 0; k < n; ++k) {
      c.y[k] = __builtin_floor(mode + 0.5 - half_width * c.w[k] + c.u[k]);
    }
    for (int32_t k = 0; k < n; ++k) {
      const bool inside = c.u[k] <= triangle;
      c.accepted[k] = inside;
      c.open[c.open_count] = k;
      c.open_count += !inside;
    }
    for (int32_t j = 0; j < c.open_count; ++j) {
      const int32_t k = c.open[j];
      const double x = left() + (c.u[k] - triangle) / slope;
      c.y[k] = __builtin_floor(x);
      c.v[k] = c.w[k] * slope + 1 - __builtin_fabs(mode + 0.5 - x) / half_width;
    }
  }
};

/// As high as the mode from end to end (Kachitvichyanukul and Schmeiser 1985).
struct Plateau {
  double left_end, area;

  Plateau() = default;
  Plateau(double left, double right) : left_end(left), area(right - left) {}

  void propose(int32_t n, Candidates& c) const {
    c.open_count = n;
    for (int32_t k = 0; k < n; ++k) {
      c.y[k] = __builtin_floor(left_end + c.u[k]);
      c.v[k] = c.w[k];
      c.accepted[k] = false;
      c.open[k] = k;
    }
  }
};

/// A hat over a law from `least` to `most`.
template <class Middle, int terms>
struct Hat {
  static constexpr int32_t near = 32;

  double mode, least, most;
  Middle middle;
  Tails tails;
  LogRatio<terms> log_ratio;
  double ratio_near[2 * near];  // of mode - 32 to mode + 31

  /// A plateau of so much on either side of the mode, and tails on the law's own probabilities at
  /// its ends. ln_step(k) = ln(f(k + 1) / f(k)); the law has no other mode and is log-concave.
  template <class LnStep>
  void put_plateau(double half_width, const LnStep& ln_step) {
    const double wanted = mode + 0.5 - half_width, right = mode + 0.5 + half_width;
    const bool cut = wanted <= least;
    const double left = cut ? least : wanted;
    middle = Plateau(left, right);
    tails = Tails(left, right, cut ? 0 : kernels::exp(log_ratio(left - mode)),
                  kernels::exp(log_ratio(right - 1 - mode)), ln_step(left - 1), -ln_step(right - 1),
                  middle.area);
  }

  /// f(k + 1) / f(k) = step(k)
  template <class Step>
  void fill_near(const Step& step) {
    double* const at_mode = ratio_near + near;
    at_mode[0] = 1;
    for (int32_t k = 1; k < near; ++k) at_mode[k] = at_mode[k - 1] * step(mode + k - 1);
    for (int32_t k = 1; k <= near; ++k) at_mode[-k] = at_mode[1 - k] / step(mode - k);
  }

  /// Decides on n pairs, in their order, and returns how many numbers it has made of them.
  int32_t numbers(int32_t n, const double* pairs, int32_t* r, const Image& image) const {
    Candidates c;
    c.begin(n, pairs, tails.area);
    middle.propose(n, c);
    propose_tails(c);
    decide(c);
    return append_accepted(
        n, r, [&](int32_t k) { return image(to_result(c.y[k])); },
        [&](int32_t k) { return c.accepted[k]; });
  }

 private:
  void propose_tails(Candidates& c) const {
    int32_t which[hat_block], count = 0;
    for (int32_t j = 0; j < c.open_count; ++j) {
      which[count] = c.open[j];
      count += c.u[c.open[j]] > tails.from;
    }
    tails.propose(count, which, c);
  }

  void decide(Candidates& c) const {
    int32_t far[hat_block], count = 0;
    for (int32_t j = 0; j < c.open_count; ++j) {
      const int32_t k = c.open[j];
      const double y = c.y[k], v = c.v[k], d = y - mode;
      // Without branches, which no processor would foresee. What fits no integer is not near.
      const auto place = static_cast<uint32_t>(_mm_cvttsd_si32(_mm_set_sd(d + near)));
      const bool is_near = place < 2 * near;
      const bool possible = (y >= least) & (y <= most) & (v <= 1);
      c.accepted[k] = possible & is_near & (v <= ratio_near[place % (2 * near)]);
      far[count] = k;
      count += possible & !is_near;
    }
    alignas(32) double ln_v[hat_block], ratio[hat_block], d[hat_block];
    for (int32_t j = 0; j < count; ++j) {
      d[j] = c.y[far[j]] - mode;
      ln_v[j] = c.v[far[j]];
    }
    kernels::ln(count, ln_v, ln_v);
    log_ratio(count, d, ratio);
    for (int32_t j = 0; j < count; ++j) c.accepted[far[j]] = ln_v[j] <= ratio[j];
  }
};

/// Pairs of uniforms until there are n numbers; numbers(count, pairs, r) makes some of them. Where
/// none comes, the hat may not be the law's: out of a file, it holds anything, and is made again,
/// once.
template <class Numbers, class Remake>
int32_t by_rejection(StreamState* stream, int32_t n, int32_t* r, const Numbers& numbers,
                     const Remake& remake) {
  constexpr int32_t suspicious = 1000;
  alignas(32) double pairs[2 * hat_block];
  Barren barren;
  bool remade = false;
  for (int32_t refused = 0; n > 0;) {
    const int32_t count = n < hat_block ? n : hat_block;
    const int32_t status = draw_uniforms(stream, 2 * count, pairs);
    if (status < 0) return status;
    const int32_t made = numbers(count, pairs, r);
    if (barren.after(made)) return RNG_BAD_ARGS;
    refused = made > 0 ? 0 : refused + count;
    if (refused > suspicious && !remade) {
      remake();
      remade = true;
    }
    r += made;
    n -= made;
  }
  return RNG_OK;
}

/// From under a hat, to be made by make(&hat).
template <class Hat, class Make>
int32_t by_rejection(StreamState* stream, int32_t n, int32_t* r, Hat* hat, const Image& image,
                     const Make& make) {
  const auto numbers = [&](int32_t count, const double* pairs, int32_t* part) {
    return hat->numbers(count, pairs, part, image);
  };
  return by_rejection(stream, n, r, numbers, [&] { make(hat); });
}

}  // namespace ORV_TAG
}  // namespace orv
