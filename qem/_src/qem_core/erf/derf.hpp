// SPDX-License-Identifier: MIT
// dErf: the error function of doubles.
#pragma once

#include "erf.hpp"
#include "tables/vderf_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

struct vderf_lanes {
  using Work = double;
  static constexpr double least = 0x1p-100;  // the powers of lesser numbers may underflow
};

template <Level level>
struct vderf_data;

template <>
struct vderf_data<Level::HA> : vderf_lanes {
  static constexpr const auto& table = vderf_ha_table;
  static constexpr int entries = 5, per_unit = 32;
  static constexpr bool in_parts = true;
};
template <>
struct vderf_data<Level::LA> : vderf_lanes {
  static constexpr const auto& table = vderf_la_table;
  static constexpr int entries = 4, per_unit = 32;
  static constexpr bool in_parts = false;
};
template <>
struct vderf_data<Level::EP> : vderf_lanes {
  static constexpr const auto& table = vderf_ep_table;
  static constexpr int entries = 2, per_unit = 32;
  static constexpr bool in_parts = false;
};

/// NaN, or 2 x/sqrt(pi), which the rest of the series does not change.
inline int vderf_cout_rare(const double* px, double* py) {
  constexpr double up = 0x1p200, c_hi = 0x1.20DD75p0, c_lo = 0x1.0A6DB446B8EA4p-30;
  const Halves<double> y(__builtin_fabs(*px) * up);
  const TwoParts<double> result = {y.hi * c_hi, y.lo * c_hi + y.whole * c_lo};
  *py = __builtin_copysign(scaled(result, 1 / up), *px);
  return QEM_STATUS_OK;
}

template <Level level>
struct DErf : ErfKernel<double, vderf_data<level>> {
  static int slow(const double* x, double* y) { return vderf_cout_rare(x, y); }
};

}  // namespace ORV_TAG
}  // namespace orv
