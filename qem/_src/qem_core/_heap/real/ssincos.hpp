// SPDX-License-Identifier: MIT
// Sine and cosine of floats.
//
// x = n pi/2 + r; a polynomial of r for each function, exchanged and signed as the quarter turn
// says. Sin, Cos, SinCos and Tan of a level all go this way, so that what they share agrees to the
// bit.
//
// HA has lanes of double and measures r in quarter turns: the product of x and the upper 29 bits of
// 2/pi is exact. LA and EP take n pi/2 off in parts; their products with n, but for the last one,
// are exact, and so are the first two differences.
#pragma once

#include <orv/qem.h>

#include "../../frame/control_words.hpp"
#include "../../frame/level.hpp"
#include "../../simd/format.hpp"
#include "../../simd/polynomial.hpp"
#include "tables/two_over_pi.hpp"
#include "tables/vssincos_polynomials.hpp"

namespace orv {
inline namespace ORV_TAG {

template <Level level>
struct vssincos_data;

template <>
struct vssincos_data<Level::HA> {
  using Work = double;
  static constexpr uint32_t rare_above = 0x40FFFFFF;  // 2^17: n comes from per_quarter_hi alone
  static constexpr double per_quarter_hi = 0x1.45F306Dp-1, per_quarter_lo = 0x1.9391054A7F09Dp-30;
};

struct vssincos_float_data {
  using Work = float;
  static constexpr uint32_t rare_above = 0x461C4000;  // 10000: n has 13 bits
  static constexpr float per_quarter = 0x1.45F306p-1f;
  static constexpr float P1 = 0x1.92p0f, P2 = 0x1.FB4p-12f;
};
template <>
struct vssincos_data<Level::LA> : vssincos_float_data {
  static constexpr float P3 = 0x1.444p-24f, P4 = 0x1.68C234p-39f;
  static constexpr const auto& sine = vssincos_la_sine;
  static constexpr const auto& cosine = vssincos_la_cosine;
};
template <>
struct vssincos_data<Level::EP> : vssincos_float_data {
  static constexpr float P3 = 0x1.4442D2p-24f;
  static constexpr const auto& sine = vssincos_ep_sine;
  static constexpr const auto& cosine = vssincos_ep_cosine;
};

/// An angle: its quarter turns, in the low bits of k, sine and cosine of what is left.
template <class V>
struct Quarter {
  V k, sine, cosine;
};

/// `one`, or one and a bit of the quarter turns where that is set: k is `one` and the turns.
template <class V>
inline constexpr Lane<V> one_turn_bit = Format<Lane<V>>::shifter / 3 * 2;
template <int bit, class V>
V turn_bit(V k) {
  using Bits = typename Format<Lane<V>>::Bits;
  return and_bits(k, __builtin_bit_cast(Bits, one_turn_bit<V>) | bit);
}

template <class V>
V select_odd(V k, V odd, V even) {
  return turn_bit<1>(k) > splat<V>(one_turn_bit<V>) ? odd : even;
}
/// -1 in the second half of a turn, otherwise 1.
template <class V>
V half_turn_sign(V k) {
  return (one_turn_bit<V> + 1) - turn_bit<2>(k);
}

template <class V>
V sine_of(const Quarter<V>& q) {
  return select_odd(q.k, q.cosine, q.sine) * half_turn_sign(q.k);
}
template <class V>
V cosine_of(const Quarter<V>& q) {
  return select_odd(q.k, -q.sine, q.cosine) * half_turn_sign(q.k);
}
template <class V>
V tangent_of(const Quarter<V>& q) {
  return select_odd(q.k, -q.cosine, q.sine) / select_odd(q.k, q.sine, q.cosine);
}

/// f quarter turns beside those of k.
template <class V>
Quarter<V> quarter_in_doubles(V k, V f) {
  const V v = f * f;
  return {k, f * horner(vssincos_sine, v), 1.0 + v * horner(vssincos_cosine, v)};
}

/// An angle in radians: its quarter turns, in the low bits of k, and r, the rest and its excess.
template <class V>
struct Rest {
  V k, r, excess;
};

/// Any float that is not rare at LA and EP, which does without the excess. A zero keeps its sign,
/// and the excess of it is +0.
template <Level level, class V>
Rest<V> rest_of(V x) {
  using D = vssincos_data<level>;
  constexpr float shifter = Format<float>::shifter;
  const V k = x * D::per_quarter + shifter, n = k - shifter;
  const V u = (x - n * D::P1) - n * D::P2, r = u - n * D::P3;
  if constexpr (level == Level::EP) {
    return {k, r, V{}};
  } else {
    return {k, r, (n * D::P3 - (u - r)) + n * D::P4};
  }
}

/// Any x that is not rare. A zero keeps its sign: sums in which it meets a zero of the other sign
/// are avoided.
template <Level level, class V>
Quarter<V> quarter_of(V x) {
  using D = vssincos_data<level>;
  if constexpr (level == Level::HA) {
    constexpr double shifter = Format<double>::shifter;
    const V quarters = x * D::per_quarter_hi, k = quarters + shifter, n = k - shifter;
    return quarter_in_doubles(k, (quarters - n) + x * D::per_quarter_lo);
  } else {
    const Rest<V> x0 = rest_of<level>(x);
    const V v = x0.r * x0.r, sine = x0.r * (1.0f + v * horner(D::sine, v));
    const V cosine = 1.0f + v * horner(D::cosine, v);
    return {x0.k, level == Level::EP ? sine : sine - x0.excess, cosine};
  }
}

/// Any finite x from 1 on (M. Payne and R. Hanek, 1983): the significand times 96 of those bits of
/// 2/pi that are left when whole turns are. No float comes closer to a multiple of pi/2 than 2^-30
/// of it, and 62 bits behind the point are computed.
template <class V>
Quarter<V> far_quarter_of(float x) {
  constexpr int padding = 64;  // zeros in front of the table's bits
  constexpr uint64_t half = 1ull << 61;
  const uint32_t bits = bits_of(x);
  const uint64_t significand = (bits & 0x7FFFFF) | 0x800000;
  const int exponent = static_cast<int>(bits >> 23 & 0xFF) - 150;  // of its lowest bit
  const int first = padding + exponent - 2, index = first / 32, shift = first % 32;
  const auto word = [=](int k) -> uint64_t {
    const uint64_t two =
        static_cast<uint64_t>(two_over_pi[index + k]) << 32 | two_over_pi[index + k + 1];
    return two << shift >> 32;
  };
  const uint64_t turn =
      (significand * word(0) << 32) + significand * word(1) + (significand * word(2) >> 32) + half;
  const uint64_t rest = (turn & ~0ull >> 2) - half;
  // Each half converts exactly; a whole 64-bit integer would go through the x87 unit in 32-bit
  // code.
  const double f = static_cast<int32_t>(rest >> 32) * 0x1p-30 +
                   static_cast<int32_t>(static_cast<uint32_t>(rest) >> 1) * 0x1p-61;
  const double quarters = static_cast<double>(static_cast<int>(turn >> 62));
  const double sign = x < 0 ? -1 : 1;
  return quarter_in_doubles(splat<V>(sign * quarters + Format<double>::shifter),
                            splat<V>(sign * f));
}

struct SSinCos {
  template <class V>
  static int rare(V x) {
    return high_word_above(x, vssincos_data<Level::HA>::rare_above);
  }

  template <class V>
  static void lane(V x, V& sine, V& cosine) {
    of_quarter(quarter_of<Level::HA>(x), sine, cosine);
  }

  /// Any finite number past the limit of the lanes.
  template <class V>
  static void far(double x, V& sine, V& cosine) {
    of_quarter(far_quarter_of<V>(static_cast<float>(x)), sine, cosine);
  }

 private:
  template <class V>
  static void of_quarter(const Quarter<V>& q, V& sine, V& cosine) {
    sine = sine_of(q);
    cosine = cosine_of(q);
  }
};

/// What the kernels of a level share.
template <Level level>
struct SAngleKernel {
  using T = float;
  using Work = typename vssincos_data<level>::Work;
  static constexpr Environment environment = environment_mode;

  template <class V>
  static int rare(V x) {
    return high_word_above(x, vssincos_data<level>::rare_above);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
