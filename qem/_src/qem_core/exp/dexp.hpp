// dExp: e^x for doubles.
//
// x = (64 m + j) ln2/64 + r, e^x = 2^m * 2^(j/64) * e^r: a table for the middle factor, a polynomial
// for the last. LA takes steps of ln2/1024 for a shorter polynomial. Largest error in ulp: HA 0.51,
// LA 1.2; EP keeps 27 bits.
#pragma once

#include "../frame/guarded.hpp"
#include "../frame/level.hpp"
#include "vdexp_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

/// Adding it leaves the nearest integer in the low bits of the sum.
inline constexpr double shifter = 0x1.8p52;

template <Level level>
struct vdexp_data;

template <>
struct vdexp_data<Level::HA> {
  static constexpr uint32_t rare_above = 0x4086232A;  // high word of 708.39..
  static constexpr int step_bits = 6;
  static constexpr double per_step = 0x1.71547652B82FEp6;  // 64/ln2
  static constexpr double step_hi = 0x1.62E42FEFAp-7;      // ln2/64; n * step_hi is exact
  static constexpr double step_lo = 0x1.CF79ABC9E3B3Ap-46;
  // e^r - 1 - r = r^2 (c2 + c3 r + c4 r^2 + c5 r^3), |r| <= ln2/128
  static constexpr double c2 = 0.4999999999994775;
  static constexpr double c3 = 0.1666666666667797;
  static constexpr double c4 = 0.04166672368662385;
  static constexpr double c5 = 0.00833333416441411;
};

template <>
struct vdexp_data<Level::LA> {
  // high word of 706.3: further down the scaled table entry is no longer normal
  static constexpr uint32_t rare_above = 0x40861266;
  static constexpr int step_bits = 10;
  static constexpr double per_step = 0x1.71547652B82FEp10;
  static constexpr double step_hi = 0x1.62E42FECp-11;
  static constexpr double step_lo = 0x1.D1CF79ABC9E3Bp-42;
  // c0 e^r, |r| <= ln2/2048; the table is divided by c0
  static constexpr double c2 = 3.0000000172366073;
  static constexpr double c1 = 5.999999973728265;
  static constexpr double c0 = 5.999999973728264;
};

template <>
struct vdexp_data<Level::EP> {
  static constexpr uint32_t rare_above = 0x4085D533;  // high word of 698.65
  static constexpr int step_bits = 6;
  static constexpr double per_step = 0x1.71547652B82FEp6;
  // c0 e^r as a polynomial in r/(ln2/64), up to 1/2; the table is divided by c0
  static constexpr double c1 = 184.66598058764086;
  static constexpr double c0 = 17050.60594303826;
};

/// The full range with one rounding: what the lanes leave out, to HA accuracy at every level.
inline int vdexp_cout_rare(const double* px, double* py) {
  const double x = *px;
  const uint32_t exponent = bits_of(x) >> 52 & 0x7FF;
  if (exponent == 0x7FF) {
    *py = bits_of(x) == bits_of(-__builtin_inf()) ? 0.0 : x * x;
    return QEM_STATUS_OK;
  }
  if (exponent <= 0x3CA) {  // below 2^-53
    *py = x + 1.0;
    return QEM_STATUS_OK;
  }
  if (x > 0x1.62E42FEFA39EFp9) {  // 709.78
    const double largest = opaque(0x1.FFFFFFFFFFFFFp1023);
    *py = largest * largest;
    return QEM_STATUS_OVERFLOW;
  }
  if (x < -0x1.74910D52D3051p9) {  // -745.13
    const double smallest = opaque(0x1.0000000000001p-1022);
    *py = smallest * smallest;
    return QEM_STATUS_UNDERFLOW;
  }

  using D = vdexp_data<Level::HA>;
  const double k = x * D::per_step + shifter, n = k - shifter;
  const double r = (x - n * D::step_hi) - n * D::step_lo;
  const auto k_bits = static_cast<int32_t>(bits_of(k));
  const int m = k_bits >> D::step_bits;
  const Pair<double> t = _rewdExpHATab[k_bits & 63];
  const double q = (((0.0013888870459233254 * r + 0.008333341995140497) * r +
                     0.04166666666677052) * r + 0.1666666666665788) * r + 0.5;
  const double e = r * r * q + r;
  const double z = (e + t.second) * t.first;
  const auto power_of_two = [](int p) {
    return from_bits(static_cast<uint64_t>((p + 1023) & 0x7FF) << 52);
  };

  if (x >= -0x1.6232BDD7ABCD2p9) {  // -708.396, the result is normal
    const double y = z + t.first;
    *py = m == 1024 ? y * power_of_two(m - 1) * 2.0 : y * power_of_two(m);
    return QEM_STATUS_OK;
  }
  // Computed 2^60 too large, then brought down so that only the last step rounds.
  constexpr double down = 0x1p-60;
  const double scale = power_of_two(m + 60);
  const double h = z * scale, l = t.first * scale, s = h + l;
  if (m + 60 + 1023 <= 0x32) {  // few bits remain: rounding s does no harm
    *py = s * down;
    return QEM_STATUS_UNDERFLOW;
  }
  const double spread = s * 0x1.8p32;
  const double upper = (s + spread) - spread;  // short enough to be exact when denormal
  const double rest = (s - upper) + ((l - s) + h);
  *py = upper * down + rest * down;
  return QEM_STATUS_UNDERFLOW;
}

template <Level level>
struct DExp {
  using T = double;
  using D = vdexp_data<level>;
  static constexpr int block = 8;
  static constexpr char _QEM_THISFUNC_NAME[] = "vdExp";
  static constexpr Environment environment = {};

  template <class V>
  static int rare(V x) {
    return high_word_above(x, D::rare_above);
  }

  static int slow(const double* x, double* y) { return vdexp_cout_rare(x, y); }

  template <class V>
  static V lane(V x) {
    // n = 64 m + j, the nearest step; k holds it in its low bits
    const V v = x * D::per_step;
    const V k = v + shifter;
    const V n = k - shifter;
    constexpr uint64_t step_mask = (1u << D::step_bits) - 1;
    const Indices<V> j(and_bits(k, step_mask));
    const auto m = shift_left64(bits_of(and_bits(k, ~step_mask)), 52 - D::step_bits);

    if constexpr (level == Level::HA) {
      const V r = (x - n * D::step_hi) - n * D::step_lo;
      const V q = ((D::c5 * r + D::c4) * r + D::c3) * r + D::c2;
      const V e = q * (r * r) + r;
      V t_hi, t_lo;
      lookup(vdexp_ha_table, j, t_hi, t_lo);
      const V y = t_hi * e + t_lo + t_hi;
      return as_vector<V>(add64(bits_of(y), m));
    } else {
      V p;
      if constexpr (level == Level::LA) {
        const V r = (x - n * D::step_hi) - n * D::step_lo;
        p = ((r + D::c2) * r + D::c1) * r + D::c0;
      } else {
        const V d = v - n;
        p = (d + D::c1) * d + D::c0;
      }
      const V t = lookup(level == Level::LA ? vdexp_la_table : vdexp_ep_table, j, V{});
      return as_vector<V>(add64(bits_of(t), m)) * p;
    }
  }
};

}  // namespace ORV_TAG
}  // namespace orv
