// Sine and cosine of floats together, at HA, in lanes of double.
//
// x = n pi/2 + r; a polynomial for each function of r, exchanged and signed as the quarter turn
// says.
#pragma once

#include <orv/qem.h>

#include "../../simd/format.hpp"
#include "../../simd/polynomial.hpp"
#include "tables/vssincos_polynomials.hpp"

namespace orv {
inline namespace ORV_TAG {

struct vssincos_data {
  static constexpr uint32_t rare_above = 0x412FFFFF;        // 2^20: n P1 is exact below
  static constexpr double per_step = 0x1.45F306DC9C883p-1;  // 2/pi
  static constexpr double P1 = 0x1.921FB544p0, P2 = 0x1.0B4611A626331p-34;
};

/// The sign bits of the lanes in which bit 1 of k is set.
template <class V>
V half_turn(V k) {
  return and_bits(as_vector<V>(shift_left<V, 62>(bits_of(k))), bits_of(-0.0));
}

/// k holds the quarter turns in its low bits.
template <class V>
void sincos_of_quarter(V k, V r, V& sine, V& cosine) {
  const V v = r * r;
  const V s = r * (1.0 + v * horner(vssincos_sine, v));
  const V c = 1.0 + v * horner(vssincos_cosine, v);
  const V odd = as_vector<V>(subtract<V>(Int<V>{}, bits_of(and_bits(k, 1))));
  sine = exclusive(select(odd, c, s), half_turn(k));
  cosine = exclusive(select(odd, s, c), half_turn(k + 1.0));
}

struct SSinCos {
  template <class V>
  static int rare(V x) {
    return high_word_above(x, vssincos_data::rare_above);
  }

  template <class V>
  static void lane(V x, V& sine, V& cosine) {
    using D = vssincos_data;
    const V k = x * D::per_step + Format<double>::shifter;
    const V n = k - Format<double>::shifter;
    sincos_of_quarter(k, (x - n * D::P1) - n * D::P2, sine, cosine);
  }

  /// Any finite number past the limit of the lanes.
  template <class V>
  static void far(double x, V& sine, V& cosine) {
    double rest[2];
    const double quarters = orv_qem_kernel_reduce_pio2d(x, rest);
    sincos_of_quarter(splat<V>(quarters + Format<double>::shifter), splat<V>(rest[0]), sine,
                      cosine);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
