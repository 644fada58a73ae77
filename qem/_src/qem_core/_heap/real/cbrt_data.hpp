// SPDX-License-Identifier: MIT
// The tables and polynomials of the cube root.
#pragma once

#include "cube_root.hpp"
#include "tables/vdcbrt_tables.hpp"
#include "tables/vscbrt_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class T>
struct CbrtData;
template <>
struct CbrtData<double> {
  static constexpr const auto& table = vdcbrt_table;
  static constexpr const auto& ha_series = vdcbrt_ha_series;
  static constexpr const auto& la_series = vdcbrt_la_series;
  static constexpr const auto& ep_series = vdcbrt_ep_series;
};
template <>
struct CbrtData<float> {
  static constexpr const auto& table = vscbrt_table;
  static constexpr const auto& ha_series = vscbrt_ha_series;
  static constexpr const auto& la_series = vscbrt_la_series;
  static constexpr const auto& ep_series = vscbrt_ep_series;
};

}  // namespace ORV_TAG
}  // namespace orv
