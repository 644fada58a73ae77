// SPDX-License-Identifier: MIT
// Erfc: the complementary error function, 1 - erf(x).
#pragma once

#include "../_heap/real/normal_tail.hpp"
#include "tables/erfc_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class T, Level level>
struct ErfcData;

struct ErfcTail {
  using Slow = ErfcData<double, Level::HA>;
  static constexpr int direction = 1, whole = 2;
  static constexpr double rate = 1, zero_above = 0x1.B39DC41E48BFCp4;  // 27.226
  static constexpr bool reports_denormals = true;
};

// Lanes end where results are denormal: 26.543, and 9.1945 for floats.
template <>
struct ErfcData<double, Level::HA> : ErfcTail, TailRows {
  static constexpr uint32_t rare_above = 0x403A8B11;
  static constexpr const auto& table = erfc_table;
  static constexpr const auto& exponential = erfc_exponential;
  static constexpr const auto& near_zero = erfc_near_zero;
};
template <>
struct ErfcData<double, Level::LA> : ErfcData<double, Level::HA> {};
template <>
struct ErfcData<float, Level::HA> : ErfcTail, ShortTailRows {
  static constexpr uint32_t rare_above = 0x4022639A;
  static constexpr const auto& table = erfc_short_table;
  static constexpr const auto& exponential = erfc_short_exponential;
};
template <>
struct ErfcData<float, Level::LA> : ErfcTail, FloatTailRows {
  static constexpr uint32_t rare_above = 0x41131CDF;
  static constexpr const auto& table = erfc_float_table;
  static constexpr const auto& exponential = erfc_float_exponential;
};
template <>
struct ErfcData<float, Level::EP> : ErfcTail, ShortFloatTailRows {
  static constexpr uint32_t rare_above = 0x41131CDF;
  static constexpr const auto& table = erfc_short_float_table;
  static constexpr const auto& exponential = erfc_short_float_exponential;
};

template <class T, Level level>
struct Erfc : TailKernel<T, ErfcData<T, level>, level> {
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Erfc";
};

}  // namespace ORV_TAG
}  // namespace orv
