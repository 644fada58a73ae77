// SPDX-License-Identifier: MIT
// dExpm1: e^x - 1 of doubles.
#pragma once

#include "expm1.hpp"
#include "tables/vdexpm1_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

struct vdexpm1_data {
  using T = double;
  static constexpr int step_bits = 7;
  static constexpr double limit = 707.7032713517041;
  static constexpr double floor = -40;
  static constexpr double per_step = 184.6649652337873;
  static constexpr double step_hi = 0x1.62E42FEF8p-8;
  static constexpr double step_lo = 0x1.1CF79ABC9E3B4p-43;
  static constexpr const auto& table = vdexpm1_table;
  static constexpr uint64_t upper_half = 0xFFFFFFFFF8000000;
  static constexpr double series[] = {0.4999999999999767, 0.166666666666658, 0.04166667939432669,
                                      0.008333335878830547};
  static constexpr double ep_series[] = {0.5, 1 / 6.0};
};

inline int vdexpm1_cout_rare(const double* x, double* y) {
  return expm1_cout_rare(*x, *y, vdexp_cout_rare);
}

template <Level level>
struct DExpm1 {
  using T = double;
  static constexpr int block = level == Level::HA ? 4 : 8;
  static constexpr char _QEM_THISFUNC_NAME[] = "vdExpm1";
  static constexpr Environment environment = environment_mode;

  template <class V>
  static int rare(V x) {
    return expm1_rare<vdexpm1_data>(x);
  }

  static int slow(const double* x, double* y) { return vdexpm1_cout_rare(x, y); }

  template <class V>
  static V lane(V x) {
    return expm1_lane<vdexpm1_data, level>(x);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
