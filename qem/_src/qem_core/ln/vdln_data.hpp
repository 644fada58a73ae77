// SPDX-License-Identifier: MIT
// Constants and tables of the natural logarithm of doubles, see table_log.hpp.
#pragma once

#include "tables/vdln_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

struct vdln_data {
  using T = double;
  static constexpr int k = 9;
  static constexpr int full_from = 0;
  static constexpr double log2_hi = 0x1.62E42FEFAp-1;
  static constexpr double log2_lo = 0x1.CF79ABC9Ep-40;
  static constexpr double log2 = 0x1.62E42FEFA39EFp-1;
  static constexpr double log_e = 1.0, linear_hi = 1.0, linear_lo = 0.0;
  static constexpr const auto& full_table = vdln_full_table;
  static constexpr const auto& short_table = vdln_short_table;
  static constexpr const auto& slow_table = _qemdLnHATab;
  // HA has one degree more than LA, whose series is off by up to 2^-55.0 of the result.
  static constexpr const auto& ha_series = vdln_ha_series;
  static constexpr double la_series[] = {-0.49999999999988803, 0.33333333333308374,
                                         -0.2500003054940248, 0.2000003665949424};
  static constexpr double ep_series[] = {-0.49999999999988803, 0.33333333333308374};
};

}  // namespace ORV_TAG
}  // namespace orv
