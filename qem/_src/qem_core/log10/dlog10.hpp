// SPDX-License-Identifier: MIT
// dLog10: the decimal logarithm of doubles. LA serves EP as well.
#pragma once

#include "../ln/table_log.hpp"
#include "tables/vdlog10_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

struct vdlog10_data {
  using T = double;
  static constexpr int k = 9;
  static constexpr int full_from = 0;
  static constexpr double log2_hi = 0x1.34413509Fp-2;
  static constexpr double log2_lo = 0x1.E7FBCC47Cp-40;
  static constexpr double log2 = 0x1.34413509F79FFp-2;
  static constexpr double log_e = 0x1.BCB7B1526E50Ep-2;
  static constexpr double linear_hi = 0.43359375;
  static constexpr double linear_lo = 0x1.6F62A4DCA1C65p-11;
  static constexpr const auto& full_table = vdlog10_full_table;
  static constexpr const auto& short_table = vdlog10_short_table;
  static constexpr const auto& slow_table = _qemdLog10HATab;
  static constexpr const auto& ha_series = vdlog10_ha_series;
  static constexpr const auto& la_series = vdlog10_la_series;
};

inline int vdlog10_cout_rare(const double* x, double* y) {
  return log_cout_rare<vdlog10_data>(x, y);
}

template <Level level>
struct DLog10 {
  using T = double;
  static constexpr int block = 8;
  static constexpr char _QEM_THISFUNC_NAME[] = "vdLog10";
  static constexpr Environment environment = environment_mode;

  template <class V>
  static int rare(V x) {
    return not_positive_normal(x);
  }

  static int slow(const double* x, double* y) { return vdlog10_cout_rare(x, y); }

  template <class V>
  static V lane(V x) {
    return table_log<vdlog10_data, level>(x);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
