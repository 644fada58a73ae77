// SPDX-License-Identifier: MIT
// sPow: x^y of floats. HA is computed in lanes of double, LA and EP in floats without a table:
//
// x = 2^E m with m from 2/3 to 4/3. EP has log2 m as a polynomial in m - 1, which is exact. LA has
// it as log2 c + 2 log2(e) atanh(s), s = (m - c)/(m + c) in two parts, where c is one of four
// centers, and y log2 x in two parts as dPow.
#pragma once

#include <type_traits>

#include "pow_rare.hpp"
#include "tables/vspow_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

struct vspow_ha_data {
  static constexpr Level level = Level::EP;  // of the logarithm
  static constexpr const auto& exp = vspow_ha_exp;
};

/// The upper 12 bits: products of two such halves are exact.
inline __m256 upper_half(__m256 x) { return and_bits(x, 0xFFFFF000u); }
inline __m128 upper_half(__m128 x) { return and_bits(x, 0xFFFFF000u); }

/// log2(2^E (1 + r)), r from -1/3 to 1/3.
template <class V>
V float_log2(V exponent, V r) {
  return by_pairs(vspow_ep_log, r) * r + exponent;
}

/// The number of each lane in a table of four, by the lowest two bits of the lane.
inline __m256 pick(const float (&table)[4], __m256 lanes) {
  const __m256 all = _mm256_broadcast_ps(reinterpret_cast<const __m128*>(table));
  return _mm256_permutevar_ps(all, _mm256_castps_si256(lanes));
}
inline __m128 pick(const float (&table)[4], __m128 lanes) {
  return _mm_permutevar_ps(load<__m128>(table), bits_of(lanes));
}

/// log2(2^E m), its first part of 12 bits, to 2^-30 of it; m in the given quarter.
template <class V>
TwoParts<V> float_log2_parts(V exponent, V m, V quarter) {
  const V center = pick(vspow_la_centers, quarter), twice = center + center;
  const V r = m - center, sum = twice + r, inverse = 1.0f / sum;
  const V sum_hi = upper_half(sum), sum_lo = r - (sum_hi - twice);
  const V s_hi = upper_half(r * inverse);
  const V s_lo = ((r - s_hi * sum_hi) - s_hi * sum_lo) * inverse;
  const V s = s_hi + s_lo, s2 = s * s;
  const V rest =
      (s * vspow_slope_lo + s_lo * vspow_slope_hi + by_pairs(vspow_la_log, s2) * (s2 * s)) +
      pick(vspow_la_log_lo, quarter);
  const V whole = exponent + pick(vspow_la_log_hi, quarter);  // exact
  const V linear = s_hi * vspow_slope_hi;                     // exact
  const V head = upper_half(whole + (linear + rest));
  return {head, ((whole - head) + linear) + rest};
}

/// As pow_pass, for a vector of floats.
template <Level level, class V>
int float_pow_lane(V x, V y, V& r) {
  constexpr uint32_t two_thirds = 0x3F2AAAAB;
  constexpr float shifter = Format<float>::shifter, bound = 126;
  const Int<V> above = subtract<V>(bits_of(x), bits_of(splat<V>(from_bits(two_thirds))));
  const V exponent = to_float(shift_right<V, 23>(above));
  const V exponent_bits = and_bits(as_vector<V>(above), 0xFF800000u);
  const V m = as_vector<V>(subtract<V>(bits_of(x), bits_of(exponent_bits)));

  V w, k, power;
  if constexpr (level == Level::EP) {
    w = y * float_log2(exponent, m - 1.0f);
    k = w + shifter;
    const V f = w - (k - shifter);
    power = by_pairs(vspow_ep_exp, f) * f + 1.0f;
  } else {
    const V quarter = as_vector<V>(shift_right_logical<V, 21>(above));
    const TwoParts<V> log = float_log2_parts(exponent, m, quarter);
    const V y_hi = upper_half(y), head = y_hi * log.hi;  // exact
    const V tail = (y - y_hi) * log.hi + y * log.lo;
    w = head + tail;
    k = w + shifter;
    const V f = (head - (k - shifter)) + tail;
    power = by_pairs(vspow_la_exp, f) * f + 1.0f;
  }
  r = as_vector<V>(add<V>(bits_of(power), shift_left<V, 23>(bits_of(k))));
  const V size = and_bits(w, 0x7FFFFFFFu);
  return outside(x, Format<float>::smallest_normal, Format<float>::largest) |
         mask_of(compare<_CMP_NLT_UQ>(size, splat<V>(bound)));
}

inline int vspow_cout_rare(const float* x, const float* y, float* r) {
  double result;
  const int code = pow_rare(*x, *y, result);
  *r = static_cast<float>(result);
  return code;
}

template <Level level>
struct SPow {
  using T = float;
  using Work = std::conditional_t<level == Level::HA, double, float>;
  static constexpr int block = 8;
  static constexpr char _QEM_THISFUNC_NAME[] = "vsPow";
  static constexpr Environment environment = environment_mode;

  template <class V, size_t vectors>
  static int pass(const V (&x)[vectors], const V (&y)[vectors], V (&r)[vectors]) {
    if constexpr (level == Level::HA) {
      return pow_pass<vspow_ha_data>(x, y, r);
    } else {
      return by_vector<V, vectors>([&](int i) { return float_pow_lane<level>(x[i], y[i], r[i]); });
    }
  }
  template <class V, size_t vectors>
  static int pass(const V (&in)[2][vectors], V (&out)[1][vectors]) {
    return pass(in[0], in[1], out[0]);
  }

  static int slow(const float* x, const float* y, float* r) { return vspow_cout_rare(x, y, r); }
};

}  // namespace ORV_TAG
}  // namespace orv
