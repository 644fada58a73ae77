// SPDX-License-Identifier: MIT
// dLn: the natural logarithm of doubles.
#pragma once

#include "table_log.hpp"
#include "vdln_data.hpp"

namespace orv {
inline namespace ORV_TAG {

inline int vdln_cout_rare(const double* x, double* y) { return log_cout_rare<vdln_data>(x, y); }

template <Level level>
struct DLn {
  using T = double;
  static constexpr int block = 8;
  static constexpr char _QEM_THISFUNC_NAME[] = "vdLn";
  static constexpr Environment environment = environment_mode;

  template <class V>
  static int rare(V x) {
    return not_positive_normal(x);
  }

  static int slow(const double* x, double* y) { return vdln_cout_rare(x, y); }

  template <class V>
  static V lane(V x) {
    return table_log<vdln_data, level>(x);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
