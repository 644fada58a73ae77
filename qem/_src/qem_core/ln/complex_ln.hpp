// SPDX-License-Identifier: MIT
// Ln of complex numbers: ln |z| and the angle, Arg's of the same level.
//
// ln |z| is half the logarithm of re^2 + im^2. HA has that sum in two parts, without error where it
// is near 1: floats go through double for it, which has their squares, and doubles have theirs in
// parts. LA and EP take what it exceeds 1 by there as (x - 1)(x + 1) + y^2, x the greater of the
// parts: good beside an angle that is not small, and good alone where that is.
#pragma once

#include "../_heap/complex/slow_lane.hpp"
#include "../arg/arg.hpp"
#include "dln.hpp"
#include "sln.hpp"

namespace orv {
inline namespace ORV_TAG {

inline int cLn_HA_Scalar(const QemComplexFloat* z, QemComplexFloat* r) {
  const ControlWords words(environment_slow_lane);
  QemComplexDouble log;
  orv_qem_kernel_clog_scalar(&log, heeding_words(z->re), heeding_words(z->im));
  *r = {static_cast<float>(log.re), static_cast<float>(log.im)};
  return QEM_STATUS_OK;
}
inline int zLn_HA_Scalar(const QemComplexDouble* z, QemComplexDouble* r) {
  const ControlWords words(environment_slow_lane);
  orv_qem_kernel_clog_scalar(r, heeding_words(z->re), heeding_words(z->im));
  return QEM_STATUS_OK;
}

// ---- ln |z| ------------------------------------------------------------------------------------

/// LA and EP.
template <Level level, class V>
V log_of_size(V re, V im) {
  using T = Lane<V>;
  const V a = absolute(re), b = absolute(im), x = maximum(a, b), y = minimum(a, b);
  const V small = y * y, square = x * x + small, excess = (x - 1) * (x + 1) + small;
  const V near_1 = both(greater(square, splat<V>(T(0.5))), greater(splat<V>(T(2)), square));
  const V sum = select(near_1, 1 + excess, square), tail = both(near_1, excess - (sum - 1));
  if constexpr (wide_lanes<V>) {
    return T(0.5) * table_log<vdln_data, level>(sum, tail);
  } else {
    return T(0.5) * SLn<level>::lane(sum, tail);
  }
}

/// HA of floats, in double.
inline __m128d log_of_size_in_double(__m128d re, __m128d im) {
  const TwoParts<__m128d> sum = exact_sum(re * re, im * im);
  return 0.5 * table_log<vdln_data, Level::EP>(sum.hi, sum.lo);
}
inline __m128 log_of_size_by_halves(__m128 re, __m128 im) {
  const auto upper = [](__m128 x) { return _mm_cvtps_pd(_mm_movehl_ps(x, x)); };
  const __m128d low = log_of_size_in_double(_mm_cvtps_pd(re), _mm_cvtps_pd(im));
  const __m128d high = log_of_size_in_double(upper(re), upper(im));
  return _mm_movelh_ps(_mm_cvtpd_ps(low), _mm_cvtpd_ps(high));
}

/// HA of doubles. The sum has three parts: where the first is 1, the second is the logarithm.
template <class V>
V log_of_size_in_parts(V re, V im) {
  const Halves<V> x(re), y(im);
  const TwoParts<V> a = exact_product(x, x), b = exact_product(y, y);
  const TwoParts<V> upper = exact_sum(a.hi, b.hi), lower = exact_sum(a.lo, b.lo);
  const TwoParts<V> middle = exact_sum(upper.lo, lower.hi);
  const TwoParts<V> sum = exact_sum_ordered(upper.hi, middle.hi);
  return 0.5 * table_log<vdln_data, Level::HA>(sum.hi, sum.lo, middle.lo + lower.lo);
}

// ---- Kernels -----------------------------------------------------------------------------------

template <Level level>
struct CLn {
  using T = QemComplexFloat;
  static constexpr int block = 8;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Ln";
  static constexpr Environment environment =
      level == Level::HA ? environment_x87_extended : environment_mode;

  template <class V>
  static void lane(V re, V im, V& log, V& arg) {
    arg = angle<level>(im, re);
    if constexpr (level == Level::HA) {
      log = log_of_size_by_halves(re, im);
    } else {
      log = log_of_size<level>(re, im);
    }
  }
  template <class V>
  static int rare(V re, V im) {
    return outside(absolute(re) + absolute(im), 0x1p-60f, 0x1p60f);
  }

  static int slow(const T* z, T* r) { return cLn_HA_Scalar(z, r); }
};

template <Level level>
struct ZLn {
  using T = QemComplexDouble;
  static constexpr int block = 4;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Ln";
  static constexpr Environment environment =
      level == Level::HA ? environment_x87_extended : environment_mode;

  template <class V, size_t vectors>
  int pass(const V (&x)[2][vectors], V (&y)[2][vectors]) const {
    return by_vector<V, vectors>([&](int k) {
      const V re = x[0][k], im = x[1][k];
      y[1][k] = angle<level>(im, re);
      int rare = outside(absolute(re) + absolute(im), 0x1p-400, 0x1p400);
      if constexpr (level == Level::HA) {
        y[0][k] = log_of_size_in_parts(re, im);
        // The square of a part may be too small for its second one.
        rare |= mask_of(greater(splat<V>(0x1p-900), absolute(y[0][k])));
      } else {
        y[0][k] = log_of_size<level>(re, im);
      }
      return rare;
    });
  }

  static int slow(const T* z, T* r) { return zLn_HA_Scalar(z, r); }
};

}  // namespace ORV_TAG
}  // namespace orv
