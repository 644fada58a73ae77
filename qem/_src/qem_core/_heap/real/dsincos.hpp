// Sine and cosine of doubles together, at HA.
//
// x = n pi/256 + r + rl, and both functions of n pi/256 come from a table row: cos as A + B, A a
// power of two, sin as C + D. sin(n pi/256 + r) = C + A r + small, where A r is exact and the sum
// keeps its rounding errors; a quarter turn further in the table stands the cosine's row.
#pragma once

#include <orv/qem.h>

#include "../../frame/level.hpp"
#include "../../simd/format.hpp"
#include "../../simd/lookup.hpp"
#include "tables/vdsincos_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

struct vdsincos_data {
  static constexpr int turn = 512;                         // rows
  static constexpr uint32_t rare_above = 0x40EFFFFF;       // 65536: n P1 is exact below
  static constexpr double per_step = 0x1.45F306DC9C883p6;  // 256/pi
  static constexpr double P1 = 0x1.921FB544p-7, P2 = 0x1.0B4611A6p-41, P3 = 0x1.3198A2E037073p-76;
  static constexpr double S1 = -0.1666666666665455, S2 = 0.008333322932609515;
  static constexpr double C1 = -0.5, C2 = 0.041666666666651524, C3 = -0.0013888875887985619;
};

/// An angle: row n of the table, in the low bits of k, and what is left.
template <class V>
struct ReducedAngle {
  V k, r, rl;
};

template <class V>
ReducedAngle<V> reduce_to_row(V a) {
  using D = vdsincos_data;
  const V k = a * D::per_step + Format<double>::shifter;
  const V n = k - Format<double>::shifter;
  const V u = a - n * D::P1, r = u - n * D::P2;
  return {k, r, ((u - r) - n * D::P2) - n * D::P3};
}

/// The sine in row k of the angle and its rest.
template <class V>
V sine_from_row(V k, V r, V rl, V sine_series, V cosine_series) {
  V row[4];
  lookup(vdsincos_table, Indices<V>(and_bits(k, vdsincos_data::turn - 1)), row);
  const V &A = row[0], &B = row[1], &C = row[2], &D = row[3];
  const V m = r * B, p = C + m, Ar = A * r, h = Ar + p;
  const V e = ((C - p) + m) + ((p - h) + Ar);
  const V cosine = A + B;
  return h + (e + sine_series * cosine + cosine_series * C + (rl * (cosine - r * C) + D));
}

template <class V>
void sincos_of_reduced(const ReducedAngle<V>& angle, V& sine, V& cosine) {
  using D = vdsincos_data;
  const V r = angle.r, v = r * r;
  const V sine_series = (D::S1 + D::S2 * v) * v * r;
  const V cosine_series = (D::C1 + (D::C2 + D::C3 * v) * v) * v;
  sine = sine_from_row(angle.k, r, angle.rl, sine_series, cosine_series);
  cosine = sine_from_row(angle.k + D::turn / 4.0, r, angle.rl, sine_series, cosine_series);
}

struct DSinCos {
  template <class V>
  static int rare(V x) {
    return high_word_above(x, vdsincos_data::rare_above);
  }

  template <class V>
  static void lane(V x, V& sine, V& cosine) {
    const V sign = and_bits(x, bits_of(-0.0));
    sincos_of_reduced(reduce_to_row(exclusive(x, sign)), sine, cosine);
    sine = exclusive(sine, sign);
  }

  /// Any finite number past the limit of the lanes.
  template <class V>
  static void far(double x, V& sine, V& cosine) {
    double rest[2];
    const int quadrant = orv_qem_kernel_reduce_pio2d(x, rest);
    ReducedAngle<V> angle = reduce_to_row(splat<V>(rest[0]));
    angle.k = angle.k + static_cast<double>(quadrant * (vdsincos_data::turn / 4));
    angle.rl = angle.rl + rest[1];
    sincos_of_reduced(angle, sine, cosine);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
