// SPDX-License-Identifier: MIT
// sLog1p: ln(1 + x) of floats. Beyond the limits 1 + x is exact, or 1 is lost in x.
#pragma once

#include "log1p.hpp"
#include "tables/vslog1p_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

struct vslog1p_data {
  using T = float;
  static constexpr int k = 7;
  static constexpr int full_from = 127;
  static constexpr float log2_hi = 0x1.62E4p-1f;
  static constexpr float log2_lo = 0x1.7F7Cp-20f;
  static constexpr float log2 = 0x1.62E43p-1f;
  static constexpr float log_e = 1.0f;
  static constexpr double log_e_double = 1.0;
  static constexpr const auto& full_table = vslog1p_full_table;
  static constexpr const auto& short_table = vslog1p_short_table;
  static constexpr float ha_series[] = {-0.5000032186508179f, 0.33333757519721985f};
  static constexpr float la_series[] = {-0.5000032186508179f, 0.33333757519721985f};
  static constexpr float ep_series[] = {-0.5f};
};

inline int vslog1p_cout_rare(const float* x, float* y) {
  const float sum = 1.0f + *x;
  return log_cout_rare<vslog1p_data>(&sum, y);
}

template <Level level>
struct SLog1p {
  using T = float;
  static constexpr int block = 16;
  static constexpr char _QEM_THISFUNC_NAME[] = "vsLog1p";
  static constexpr Environment environment = environment_mode;

  template <class V>
  static int rare(V x) {
    return outside(x, -0.9999999403953552f, 3.32306998946229e+35f);
  }

  static int slow(const float* x, float* y) { return vslog1p_cout_rare(x, y); }

  template <class V>
  static V lane(V x) {
    return log1p_lane<vslog1p_data, level>(x);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
