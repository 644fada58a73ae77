// SPDX-License-Identifier: MIT
// sErf: the error function of floats, at HA in lanes of double.
#pragma once

#include "erf.hpp"
#include "tables/vserf_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class LaneType>
struct vserf_lanes {
  using Work = LaneType;
  static constexpr Work least = 0;
  static constexpr bool in_parts = false;
};

template <Level level>
struct vserf_data;

template <>
struct vserf_data<Level::HA> : vserf_lanes<double> {
  static constexpr const auto& table = vserf_ha_table;
  static constexpr int entries = 2, per_unit = 64;
};
template <>
struct vserf_data<Level::LA> : vserf_lanes<float> {
  static constexpr const auto& table = vserf_la_table;
  static constexpr int entries = 1, per_unit = 32;
};
template <>
struct vserf_data<Level::EP> : vserf_lanes<float> {
  static constexpr const auto& table = vserf_ep_table;
  static constexpr int entries = 1, per_unit = 64;
};

template <Level level>
struct SErf : ErfKernel<float, vserf_data<level>> {
  static int slow(const float*, float*) { return QEM_STATUS_OK; }  // no lane is rare
};

}  // namespace ORV_TAG
}  // namespace orv
