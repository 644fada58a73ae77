// SPDX-License-Identifier: MIT
// CdfNorm: the distribution function of the normal law, erfc(-x/sqrt(2))/2.
#pragma once

#include "../_heap/real/normal_tail.hpp"
#include "tables/cdfnorm_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class T, Level level>
struct CdfNormData;

struct CdfNormTail {
  using Slow = CdfNormData<double, Level::HA>;
  static constexpr int direction = -1, whole = 1;
  static constexpr double rate = 0.5, zero_above = 0x1.33E21DC3F3BD7p5;  // 38.485
  static constexpr bool reports_denormals = false;
};

// Lanes end where results are denormal: 37.519, and 12.949 for floats.
template <>
struct CdfNormData<double, Level::HA> : CdfNormTail, TailRows {
  static constexpr uint32_t rare_above = 0x4042C27A;
  static constexpr const auto& table = cdfnorm_table;
  static constexpr const auto& exponential = cdfnorm_exponential;
  static constexpr const auto& near_zero = cdfnorm_near_zero;
};
template <>
struct CdfNormData<double, Level::LA> : CdfNormData<double, Level::HA> {};
template <>
struct CdfNormData<double, Level::EP> : CdfNormTail, ShortTailRows {
  static constexpr uint32_t rare_above = 0x4042C27A;
  static constexpr const auto& table = cdfnorm_short_table;
  static constexpr const auto& exponential = cdfnorm_short_exponential;
};
template <>
struct CdfNormData<float, Level::HA> : CdfNormTail, ShortTailRows {
  static constexpr uint32_t rare_above = 0x4029E65F;
  static constexpr const auto& table = cdfnorm_short_table;
  static constexpr const auto& exponential = cdfnorm_short_exponential;
};
template <>
struct CdfNormData<float, Level::LA> : CdfNormTail, FloatTailRows {
  static constexpr uint32_t rare_above = 0x414F3301;
  static constexpr const auto& table = cdfnorm_float_table;
  static constexpr const auto& exponential = cdfnorm_float_exponential;
};
template <>
struct CdfNormData<float, Level::EP> : CdfNormTail, ShortFloatTailRows {
  static constexpr uint32_t rare_above = 0x414F3301;
  static constexpr const auto& table = cdfnorm_short_float_table;
  static constexpr const auto& exponential = cdfnorm_short_float_exponential;
};

template <class T, Level level>
struct CdfNorm : TailKernel<T, CdfNormData<T, level>, level> {
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "CdfNorm";
};

}  // namespace ORV_TAG
}  // namespace orv
