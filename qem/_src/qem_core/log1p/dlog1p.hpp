// SPDX-License-Identifier: MIT
// dLog1p: ln(1 + x) of doubles. Beyond the limits 1 + x is exact, or 1 is lost in x.
#pragma once

#include "../ln/vdln_data.hpp"
#include "log1p.hpp"

namespace orv {
inline namespace ORV_TAG {

inline int vdlog1p_cout_rare(const double* x, double* y) {
  const double sum = 1.0 + *x;
  return log_cout_rare<vdln_data>(&sum, y);
}

template <Level level>
struct DLog1p {
  using T = double;
  static constexpr int block = 4;
  static constexpr char _QEM_THISFUNC_NAME[] = "vdLog1p";
  static constexpr Environment environment = environment_mode;

  template <class V>
  static int rare(V x) {
    return outside(x, -0x1.FFFFFFFFFFFFEp-1, 0x1.FFFFFFFFFEFFFp1012);
  }

  static int slow(const double* x, double* y) { return vdlog1p_cout_rare(x, y); }

  template <class V>
  static V lane(V x) {
    return log1p_lane<vdln_data, level>(x);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
