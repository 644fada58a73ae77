// SPDX-License-Identifier: MIT
// Sqrt of complex numbers, the one with a real part that is not negative.
//
// With x = |re| and y = |im| its parts are t = sqrt((x + |z|)/2) and y/(2t); the greater one is the
// real part unless re is negative. LA takes that as it stands, HA of floats goes through double,
// and HA of doubles has |z| in two parts and corrects root and quotient by what they leave.
#pragma once

#include "../_heap/complex/scalar_kernels.hpp"
#include "../_heap/complex/slow_lane.hpp"
#include "../hypot/hypot.hpp"

namespace orv {
inline namespace ORV_TAG {

/// The root in its place, from its greater part and the other.
template <class V>
void place_root(V re, V im, V greater_part, V other, V& root_re, V& root_im) {
  const V left = greater(V{}, re);
  root_re = select(left, other, greater_part);
  const V size = select(left, greater_part, other);
  root_im = either(size, and_bits(im, bits_of(-Lane<V>{0})));
}

template <class V>
void complex_root(V re, V im, V square, V& root_re, V& root_im) {
  const V t = square_root((absolute(re) + square_root(square)) * 0.5f);
  place_root(re, im, t, absolute(im) / (t + t), root_re, root_im);
}

template <Level level>
struct CSqrt {
  using T = QemComplexFloat;
  static constexpr bool in_double = level == Level::HA;
  using Work = std::conditional_t<in_double, double, float>;
  static constexpr int block = 8;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Sqrt";
  static constexpr Environment environment =
      in_double ? environment_x87_extended : environment_mode;
  // Squares of sizes in the lanes.
  static constexpr double smallest = in_double ? 0x1p-300 : 0x1p-100;
  static constexpr double largest = in_double ? 0x1p300 : 0x1p126;

  template <class V, size_t vectors>
  int pass(const V (&x)[2][vectors], V (&y)[2][vectors]) const {
    return by_vector<V, vectors>([&](int k) {
      const V re = x[0][k], im = x[1][k], square = re * re + im * im;
      complex_root(re, im, square, y[0][k], y[1][k]);
      return outside(square, Work(smallest), Work(largest));
    });
  }

  static int slow(const T* z, T* r) {
    const ControlWords words(environment_slow_lane);
    unpack(_qem_csqrtf_scalar(z->re, z->im), r);
    return QEM_STATUS_OK;
  }
};

/// y - 2 t q, where q is about y/(2t): nearly exact.
template <class V>
V half_quotient_residual(V y, V t, V q) {
  const V twice = t + t, t_hi = upper_half(twice), q_hi = upper_half(q);
  return ((y - t_hi * q_hi) - t_hi * (q - q_hi)) - (twice - t_hi) * q;
}

struct ZSqrt {
  using T = QemComplexDouble;
  static constexpr int block = 4;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Sqrt";
  static constexpr Environment environment = environment_x87_extended;
  static constexpr double smallest = 0x1p-800, largest = 0x1p400;  // squares of sizes

  template <class V>
  static void lane(V re, V im, V& root_re, V& root_im) {
    const V x = absolute(re), y = absolute(im);
    const TwoParts<V> size = hypot_in_parts(x, y), sum = exact_sum_ordered(size.hi, x);
    const V half = 0.5 * sum.hi, t = square_root(half), inverse = 0.5 / t;
    const V t_lo = (root_residual(half, t) + 0.5 * (sum.lo + size.lo)) * inverse;
    const V q = y * inverse;
    const V q_lo = (half_quotient_residual(y, t, q) - (q + q) * t_lo) * inverse;
    place_root(re, im, t + t_lo, q + q_lo, root_re, root_im);
  }

  /// Quotients of what is very small would lose bits.
  template <class V>
  static int rare(V re, V im) {
    const V y = absolute(im), small = without(equal(y, V{}), greater(splat<V>(0x1p-850), y));
    return outside(re * re + im * im, smallest, largest) | mask_of(small);
  }

  static int slow(const T* z, T* r) {
    orv_qem_kernel_csqrt_scalar(r, heeding_words(z->re), heeding_words(z->im));
    return QEM_STATUS_OK;
  }
};

}  // namespace ORV_TAG
}  // namespace orv
