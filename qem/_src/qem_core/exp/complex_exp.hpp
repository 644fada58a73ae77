// SPDX-License-Identifier: MIT
// Exp of complex numbers: e^re (cos im + i sin im).
//
// LA of floats multiplies the functions of the parts, HA of floats does so in double. HA of doubles
// has both factors in parts, upper ones of 26 bits and what these leave, so that the product is
// rounded once. Where e^re alone is out of range, the scalar routine is not.
#pragma once

#include "../_heap/complex/scalar_kernels.hpp"
#include "../_heap/complex/slow_lane.hpp"
#include "../_heap/real/sincos.hpp"
#include "dexp.hpp"
#include "sexp.hpp"

namespace orv {
inline namespace ORV_TAG {

template <Level level>
struct CExp {
  using T = QemComplexFloat;
  static constexpr bool in_double = level == Level::HA;
  using Work = std::conditional_t<in_double, double, float>;
  static constexpr int block = 8;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Exp";
  static constexpr Environment environment =
      in_double ? environment_x87_extended : environment_mode;

  template <class V>
  static void lane(V re, V im, V& y_re, V& y_im) {
    using D = std::conditional_t<in_double, vdexp_data<Level::LA>, vsexp_data<Level::LA>>;
    const V size = exp_lane<D, Level::LA>(re);
    const Quarter<V> turn = quarter_of<level>(im);
    y_re = size * cosine_of(turn), y_im = size * sine_of(turn);
  }
  /// Real parts up to 86 give results in range.
  template <class V>
  static int rare(V re, V im) {
    constexpr uint32_t most = Format<Work>::high_word(86);
    return high_word_above(re, most - 1) | high_word_above(im, vssincos_data<level>::rare_above);
  }

  static int slow(const T* z, T* r) {
    const ControlWords words(environment_slow_lane);
    unpack(_qem_cexpt_scalar(z->re, z->im), r);
    return overflow_status(*r, *z);
  }
};

/// A number as 26 upper bits and the rest.
template <class V>
struct UpperAndRest {
  V upper, rest;
};

/// e^x to some bits more than a number has, where no part leaves the range.
template <class V>
UpperAndRest<V> exp_in_halves(V x) {
  using F = Format<double>;
  using D = vdexp_data<Level::HA>;
  constexpr uint64_t step_mask = (1u << D::step_bits) - 1;
  // The bias joined to the steps: the bits above them are the exponent of the power of 2.
  constexpr double shifter = F::shifter + (F::bias << D::step_bits);
  const V k = x * D::per_step + shifter, n = k - shifter;
  const V r = (x - n * D::step_hi) - n * D::step_lo;
  const V power = as_vector<V>(
      shift_left<V, F::fraction_bits - D::step_bits>(bits_of(and_bits(k, ~step_mask))));
  V t_hi, t_lo;
  lookup(D::table, Indices<V>(and_bits(k, step_mask)), t_hi, t_lo);
  const V excess = t_hi * (horner(D::polynomial, r) * (r * r) + r) + t_lo;
  const V upper = upper_half(t_hi + excess);
  return {upper * power, ((t_hi - upper) + excess) * power};
}

struct ZExp {
  using T = QemComplexDouble;
  static constexpr int block = 4;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Exp";
  static constexpr Environment environment = environment_x87_extended;

  template <class V>
  static void lane(V re, V im, V& y_re, V& y_im) {
    const UpperAndRest<V> size = exp_in_halves(re);
    const SinCosOfAngle<Level::HA, V> turn(reduce_near<Level::HA>(im));
    y_re = product(size, turn.cosine_in_parts());
    y_im = product(size, turn.sine_in_parts());
  }
  /// Products of what is very small would lose bits.
  template <class V>
  static int rare(V re, V im) {
    using F = Format<double>;
    const V size = absolute(im);
    const V small = without(equal(size, V{}), greater(splat<V>(0x1p-90), number_or_zero(size)));
    return high_word_above(re, F::high_word(600) - 1) |
           high_word_above(im, F::high_word(vdsincos_data<Level::HA>::limit) - 1) | mask_of(small);
  }

  static int slow(const T* z, T* r) {
    orv_qem_kernel_cexp_scalar(r, heeding_words(z->re), heeding_words(z->im));
    return overflow_status(*r, *z);
  }

 private:
  /// The order of the signs leaves a zero its own.
  template <class V, class Parts>
  static V product(const UpperAndRest<V>& size, const Parts& turn) {
    const V whole = turn.whole(), upper = upper_half(whole);
    const V less = turn.less - (turn.hi - upper);
    return size.upper * upper - (size.upper * less - size.rest * whole);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
