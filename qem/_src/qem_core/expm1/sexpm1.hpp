// SPDX-License-Identifier: MIT
// sExpm1: e^x - 1 of floats; one kernel for all levels.
#pragma once

#include "../exp/sexp.hpp"
#include "expm1.hpp"
#include "tables/vsexpm1_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

struct vsexpm1_data {
  using T = float;
  static constexpr int step_bits = 6;
  static constexpr float limit = 86.64339447021484f;
  static constexpr float floor = -20;
  static constexpr float per_step = 92.33248138427734f;
  static constexpr float step_hi = 0.010833740234375f;
  static constexpr float step_lo = -3.3155381515825866e-06f;
  static constexpr const auto& table = vsexpm1_table;
  static constexpr uint32_t upper_half = 0xFFFFF000;
  static constexpr float series[] = {0.5000008940696716f, 0.16666696965694427f};
};

inline int vsexpm1_cout_rare(const float* x, float* y) {
  return expm1_cout_rare(*x, *y, vsexp_cout_rare);
}

template <Level level>
struct SExpm1 {
  using T = float;
  static constexpr int block = 8;
  static constexpr char _QEM_THISFUNC_NAME[] = "vsExpm1";
  static constexpr Environment environment = environment_mode;

  template <class V>
  static int rare(V x) {
    return expm1_rare<vsexpm1_data>(x);
  }

  static int slow(const float* x, float* y) { return vsexpm1_cout_rare(x, y); }

  template <class V>
  static V lane(V x) {
    return expm1_lane<vsexpm1_data, level>(x);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
