// SPDX-License-Identifier: MIT
// Sine and cosine of doubles, one of them or both.
//
// x = n pi/256 + r. A table has sine and cosine of n pi/256, polynomials give those of r, and the
// addition theorems join them: both functions come from the same row and the same polynomials, so
// the second one costs little and has the bits that it has alone.
//
// Nothing here takes x apart from its sign: row 0 has -0 as its sine, with which the sums below
// give a zero the sign of x.
#pragma once

#include <orv/qem.h>

#include "../../frame/level.hpp"
#include "../../simd/format.hpp"
#include "../../simd/lookup.hpp"
#include "../../simd/polynomial.hpp"
#include "tables/vdsincos_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

inline constexpr int vdsincos_turn = 512;  // rows

/// The upper half of a number: its product with another upper half, or with 27 bits, is exact.
template <class V>
V upper_half(V x) {
  return and_bits(x, ~0ull << 27);
}

/// An angle: n in the low bits of k, and the rest in two parts.
template <class V>
struct ReducedAngle {
  V k, r, rl;
};

// A level's constants: where its lanes end, pi/256 in parts, the polynomials. All parts are
// positive, so that a zero keeps its sign. Up to the limit n times any part but the last is exact;
// at LA and EP the last but one needs an n of few bits for that, as multiples of pi/2 have, the
// only angles of which r may be much smaller than the step.
template <Level level>
struct vdsincos_data;

template <>
struct vdsincos_data<Level::HA> {
  static constexpr double limit = 0x1p16;
  static constexpr double P1 = 0x1.921FB544p-7, P2 = 0x1.0B4611A6p-41, P3 = 0x1.3198A2E037073p-76;
  static constexpr const auto& sine = vdsincos_sine;
  static constexpr const auto& cosine = vdsincos_ha_cosine;

  /// x - n pi/256
  template <class V>
  static void reduce(V x, V n, V& r, V& rl) {
    const V u = x - n * P1;
    r = u - n * P2;
    rl = ((u - r) - n * P2) - n * P3;
  }
};

template <>
struct vdsincos_data<Level::LA> {
  static constexpr double limit = 0x1p24;
  static constexpr double P1 = 0x1.921FBp-7, P2 = 0x1.5110Bp-29, P3 = 0x1.1846989p-51,
                          P4 = 0x1.198A2E0370734p-80;
  static constexpr const auto& sine = vdsincos_sine;
  static constexpr const auto& cosine = vdsincos_la_cosine;

  template <class V>
  static void reduce(V x, V n, V& r, V&) {
    r = (((x - n * P1) - n * P2) - n * P3) - n * P4;
  }
};

template <>
struct vdsincos_data<Level::EP> {
  static constexpr double limit = 0x1p24;
  static constexpr double P1 = 0x1.921FBp-7, P2 = 0x1.5110B46p-29, P3 = 0x1.1A62633145C07p-61;
  static constexpr const auto& sine = vdsincos_ep_sine;
  static constexpr const auto& cosine = vdsincos_ep_cosine;

  template <class V>
  static void reduce(V x, V n, V& r, V&) {
    r = ((x - n * P1) - n * P2) - n * P3;
  }
};

/// Angles up to the level's limit. Only HA has a second part of the rest.
template <Level level, class V>
ReducedAngle<V> reduce_near(V x) {
  constexpr double steps = 0x1.45F306DC9C883p6;  // 256/pi
  ReducedAngle<V> angle = {x * steps + Format<double>::shifter, V{}, V{}};
  vdsincos_data<level>::reduce(x, angle.k - Format<double>::shifter, angle.r, angle.rl);
  return angle;
}

/// Both functions of an angle; a kernel pays for those that it asks for.
template <Level level, class V>
class SinCosOfAngle {
 public:
  explicit SinCosOfAngle(const ReducedAngle<V>& angle) {
    using D = vdsincos_data<level>;
    const V r = angle.r, v = r * r;
    lookup(vdsincos_pairs, Indices<V>(and_bits(angle.k, vdsincos_turn - 1)), sine_, cosine_);
    s_ = r * (1.0 + v * horner(D::sine, v));
    c_ = v * horner(D::cosine, v);
    if constexpr (level == Level::EP) c_ = 1.0 + c_;
  }

  V sine() const {
    if constexpr (level == Level::EP) return sine_ * c_ + cosine_ * s_;
    return sine_ - (sine_ * c_ - cosine_ * s_);
  }
  V cosine() const {
    if constexpr (level == Level::EP) return cosine_ * c_ - sine_ * s_;
    return cosine_ - (cosine_ * c_ + sine_ * s_);
  }

 private:
  V sine_, cosine_;  // of the row
  V s_, c_;          // sine of r, and cosine, at LA 1 less the cosine
};

/// At HA a function of the row has an upper half, whose product with that of r is exact, and the
/// sum of the two greatest terms keeps its rounding error.
template <class V>
class SinCosOfAngle<Level::HA, V> {
 public:
  explicit SinCosOfAngle(const ReducedAngle<V>& angle) {
    using D = vdsincos_data<Level::HA>;
    const V r = angle.r, v = r * r;
    V row[4];
    lookup(vdsincos_table, Indices<V>(and_bits(angle.k, vdsincos_turn - 1)), row);
    sine_ = {row[0], row[1]}, cosine_ = {row[2], row[3]};
    r_ = upper_half(r);
    s_ = r * v * horner(D::sine, v) + ((r - r_) + angle.rl);
    c_ = v * horner(D::cosine, v);
  }

  /// A function to some bits more than a number has: hi - less.
  struct Parts {
    V hi, less;
    V whole() const { return hi - less; }
  };
  Parts sine_in_parts() const { return turned<1>(sine_, cosine_); }
  Parts cosine_in_parts() const { return turned<-1>(cosine_, sine_); }
  V sine() const { return sine_in_parts().whole(); }
  V cosine() const { return cosine_in_parts().whole(); }

 private:
  struct Value {
    V hi, lo;
  };
  /// f of the angle, of which `sign` times g is the derivative.
  template <int sign>
  Parts turned(const Value& f, const Value& g) const {
    const auto plus = [](V a, V b) { return sign > 0 ? a + b : a - b; };
    const auto minus = [](V a, V b) { return sign > 0 ? a - b : a + b; };
    const V p = g.hi * r_, h = plus(f.hi, p), error = minus(h - f.hi, p);
    const V rest = g.lo * r_ + (g.hi + g.lo) * s_;
    return {h, error - (plus(f.lo, rest) + (f.hi + f.lo) * c_)};
  }

  Value sine_, cosine_;  // of the row
  V r_, s_;              // upper half of r, sine of r less that
  V c_;                  // cosine of r less 1
};

/// Both functions at HA, up to its limit and beyond.
struct DSinCos {
  template <class V>
  static int rare(V x) {
    return high_word_above(x, Format<double>::high_word(vdsincos_data<Level::HA>::limit) - 1);
  }

  template <class V>
  static void lane(V x, V& sine, V& cosine) {
    both(reduce_near<Level::HA>(x), sine, cosine);
  }

  /// Any finite number past the limit of the lanes.
  template <class V>
  static void far(double x, V& sine, V& cosine) {
    double rest[2];
    const int quadrant = orv_qem_kernel_reduce_pio2d(x, rest);
    ReducedAngle<V> angle = reduce_near<Level::HA>(splat<V>(rest[0]));
    angle.k = angle.k + static_cast<double>(quadrant * (vdsincos_turn / 4));
    angle.rl = angle.rl + rest[1];
    both(angle, sine, cosine);
  }

 private:
  template <class V>
  static void both(const ReducedAngle<V>& angle, V& sine, V& cosine) {
    const SinCosOfAngle<Level::HA, V> functions(angle);
    sine = functions.sine(), cosine = functions.cosine();
  }
};

}  // namespace ORV_TAG
}  // namespace orv
