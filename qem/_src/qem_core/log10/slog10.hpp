// SPDX-License-Identifier: MIT
// sLog10: the decimal logarithm of floats.
#pragma once

#include "../ln/table_log.hpp"
#include "tables/vslog10_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

struct vslog10_data {
  using T = float;
  static constexpr int k = 8;
  static constexpr int full_from = 127;
  static constexpr float log2_hi = 0x1.3442p-2f;
  static constexpr float log2_lo = -0x1.95ECp-19f;
  static constexpr float log2 = 0x1.344136p-2f;
  static constexpr float log_e = 0x1.BCB7B2p-2f;
  static constexpr double log_e_double = 0x1.BCB7B1526E50Ep-2;
  static constexpr float linear_hi = 0.43359375f;
  static constexpr float linear_lo = 0x1.6F62A4p-11f;
  static constexpr const auto& full_table = vslog10_full_table;
  static constexpr const auto& short_table = vslog10_short_table;
  static constexpr const auto& ha_series = vslog10_ha_series;
  static constexpr const auto& la_series = vslog10_la_series;
  static constexpr float ep_series[] = {-0.5f * log_e};
};

inline int vslog10_cout_rare(const float* x, float* y) { return log_cout_rare<vslog10_data>(x, y); }

template <Level level>
struct SLog10 {
  using T = float;
  static constexpr int block = 8;
  static constexpr char _QEM_THISFUNC_NAME[] = "vsLog10";
  static constexpr Environment environment = environment_mode;

  template <class V>
  static int rare(V x) {
    return not_positive_normal(x);
  }

  static int slow(const float* x, float* y) { return vslog10_cout_rare(x, y); }

  template <class V>
  static V lane(V x) {
    return table_log<vslog10_data, level>(x);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
