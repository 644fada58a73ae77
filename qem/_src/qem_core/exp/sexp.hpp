// SPDX-License-Identifier: MIT
// sExp: e^x of floats.
#pragma once

#include "exp.hpp"
#include "tables/vsexp_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

struct vsexp_steps {
  static constexpr int step_bits = 7;
  static constexpr float per_step = 184.66496f;
  static constexpr float step_hi = 0.0054168701171875f;
  static constexpr float step_lo = -1.6577690757912933e-06f;
};

template <Level level>
struct vsexp_data;

template <>
struct vsexp_data<Level::HA> : vsexp_steps {
  static constexpr uint32_t rare_above = 0x42AEAC4F;  // 87.3365
  static constexpr const auto& table = vsexp_ha_table;
  static constexpr float polynomial[] = {0.499999076128006f};  // (e^r - 1 - r)/r^2
};

template <>
struct vsexp_data<Level::LA> : vsexp_steps {
  static constexpr uint32_t rare_above = 0x42AD0000;  // 86.5: below, table entries are not normal
  static constexpr const auto& table = vsexp_la_table;
  static constexpr const auto& polynomial = vsexp_la_polynomial;
};

template <>
struct vsexp_data<Level::EP> : vsexp_steps {
  static constexpr uint32_t rare_above = 0x42A30000;  // 81.5, likewise
  static constexpr const auto& table = vsexp_ep_table;
  static constexpr const auto& polynomial = vsexp_ep_polynomial;
};

/// In doubles, so that the conversion is the one rounding, also of a denormal result.
inline int vsexp_cout_rare(const float* px, float* py) {
  const float x = *px;
  if ((bits_of(x) & 0x7F800000) == 0x7F800000) {
    *py = x < 0.0f ? 0.0f : x * x;
    return QEM_STATUS_OK;
  }
  if (x > 0x1.62E42Ep6f) {  // 88.7228
    const float largest = opaque(Format<float>::largest);
    *py = largest * largest;
    return QEM_STATUS_OVERFLOW;
  }
  if (x < -0x1.9FE368p6f) {  // -103.972
    const float smallest = opaque(0x1.000002p-126f);
    *py = smallest * smallest;
    return QEM_STATUS_UNDERFLOW;
  }
  // e^r = 1 + r + ..., |r| <= ln2/2
  static constexpr double series[] = {1,        1,         1 / 2.0,    1 / 6.0,     1 / 24.0,
                                      1 / 120., 1 / 720.0, 1 / 5040.0, 1 / 40320.0, 1 / 362880.0};
  constexpr double shifter = Format<double>::shifter;
  const double k = x * 0x1.71547652B82FEp0 + shifter, n = k - shifter;
  const double r = x - n * 0x1.62E42FEFA39EFp-1;
  const float y = static_cast<float>(horner(series, r) * power_of_two(static_cast<int>(n)));
  *py = y;
  return y < Format<float>::smallest_normal ? QEM_STATUS_UNDERFLOW : QEM_STATUS_OK;
}

template <Level level>
struct SExp {
  using T = float;
  static constexpr int block = 16;
  static constexpr char _QEM_THISFUNC_NAME[] = "vsExp";
  static constexpr Environment environment = environment_mode;

  template <class V>
  static int rare(V x) {
    return high_word_above(x, vsexp_data<level>::rare_above);
  }

  static int slow(const float* x, float* y) { return vsexp_cout_rare(x, y); }

  template <class V>
  static V lane(V x) {
    return exp_lane<vsexp_data<level>, level>(x);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
