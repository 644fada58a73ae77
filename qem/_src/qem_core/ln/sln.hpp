// SPDX-License-Identifier: MIT
// sLn: the natural logarithm of floats.
//
// x = 2^k m with m in [2/3, 4/3), ln x = k ln2 + ln(1 + r), r = m - 1: a polynomial and no table.
#pragma once

#include "table_log.hpp"
#include "tables/vsln_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

struct vsln_data {
  static constexpr uint32_t two_thirds = 0x3F2AAAAB;  // bits of 2/3
  static constexpr uint32_t fraction = 0x7FFFFF;
  static constexpr float ln2_hi = 0x1.62E4p-1f;  // 15 bits: k times it is exact
  static constexpr float ln2_lo = 0x1.7F7D1Cp-20f;
  static constexpr float ln2 = 0x1.62E43p-1f;
  static constexpr double log_e_double = 1.0;
};

inline int vsln_cout_rare(const float* x, float* y) { return log_cout_rare<vsln_data>(x, y); }

template <Level level>
struct SLn {
  using T = float;
  using D = vsln_data;
  static constexpr int block = 16;
  static constexpr char _QEM_THISFUNC_NAME[] = "vsLn";
  static constexpr Environment environment = environment_mode;

  template <class V>
  static int rare(V x) {
    return not_positive_normal(x);
  }

  static int slow(const float* x, float* y) { return vsln_cout_rare(x, y); }

  /// ln x, or ln(x + tail), where the tail is too small for x to hold it.
  template <class V, class... Tail>
  static V lane(V x, Tail... tail) {
    const auto two_thirds = bits_of(splat<V>(from_bits(D::two_thirds)));
    const auto offset = subtract<V>(bits_of(x), two_thirds);
    const V k = to_float(shift_right<V, 23>(offset));
    const V fraction = and_bits(as_vector<V>(offset), D::fraction);
    const V m = as_vector<V>(add<V>(bits_of(fraction), two_thirds));
    const V r = ((m - 1.0f) + ... + (tail * scale_of<V>(offset)));
    const V r2 = r * r;

    if constexpr (level == Level::HA) {
      // high + r - r^2/2 with what its two additions lose
      const V high = k * D::ln2_hi, low = k * D::ln2_lo;
      const V half_square = r2 * 0.5f;
      const V s1 = high + r;
      const V lost1 = r - (s1 - high);
      const V s2 = s1 - half_square;
      const V lost2 = (s1 - s2) - half_square;
      const V cubic = horner(vsln_ha_series, r) * (r2 * r);
      return (((low + lost1) + lost2) + cubic) + s2;
    } else if constexpr (level == Level::LA) {
      const V q = horner(vsln_la_series, r) * r2;
      return ((k * D::ln2_lo + q) + r) + k * D::ln2_hi;
    } else {
      return (horner(vsln_ep_series, r) * r2 + r) + k * D::ln2;
    }
  }

 private:
  /// m/x
  template <class V>
  static V scale_of(Int<V> offset) {
    const V exponent = and_bits(as_vector<V>(offset), ~D::fraction);
    return as_vector<V>(subtract<V>(bits_of(splat<V>(1)), bits_of(exponent)));
  }
};

}  // namespace ORV_TAG
}  // namespace orv
