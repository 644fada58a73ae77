// SPDX-License-Identifier: MIT
// dExp: e^x of doubles.
#pragma once

#include "exp.hpp"
#include "tables/vdexp_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

template <Level level>
struct vdexp_data;

template <>
struct vdexp_data<Level::HA> {
  static constexpr uint32_t rare_above = 0x4086232A;  // 708.39
  static constexpr int step_bits = 6;
  static constexpr double per_step = 0x1.71547652B82FEp6;
  static constexpr double step_hi = 0x1.62E42FEFAp-7;
  static constexpr double step_lo = 0x1.CF79ABC9E3B3Ap-46;
  static constexpr const auto& table = vdexp_ha_table;
  // (e^r - 1 - r)/r^2
  static constexpr double polynomial[] = {0.4999999999994775, 0.1666666666667797,
                                          0.04166672368662385, 0.00833333416441411};
};

template <>
struct vdexp_data<Level::LA> {
  static constexpr uint32_t rare_above = 0x40861266;  // 706.3: below, table entries are not normal
  static constexpr int step_bits = 10;
  static constexpr double per_step = 0x1.71547652B82FEp10;
  static constexpr double step_hi = 0x1.62E42FECp-11;
  static constexpr double step_lo = 0x1.D1CF79ABC9E3Bp-42;
  static constexpr const auto& table = vdexp_la_table;
  static constexpr double polynomial[] = {5.999999973728264, 5.999999973728265, 3.0000000172366073};
};

template <>
struct vdexp_data<Level::EP> {
  static constexpr uint32_t rare_above = 0x4085D533;  // 698.65, likewise
  static constexpr int step_bits = 6;
  static constexpr double per_step = 0x1.71547652B82FEp6;
  static constexpr const auto& table = vdexp_ep_table;
  static constexpr double polynomial[] = {17050.60594303826, 184.66598058764086};
};

/// e^x 2^p for x from -746 to 711, rounded once also where it is denormal.
inline double exp_times_power(double x, int p) {
  using D = vdexp_data<Level::HA>;
  constexpr double shifter = Format<double>::shifter;
  const double k = x * D::per_step + shifter, n = k - shifter;
  const double r = (x - n * D::step_hi) - n * D::step_lo;
  const auto k_bits = static_cast<int32_t>(bits_of(k));
  const int m = k_bits >> D::step_bits;
  const Pair<double> t = _rewdExpHATab[k_bits & 63];
  static constexpr double series[] = {0.5, 0.1666666666665788, 0.04166666666677052,
                                      0.008333341995140497, 0.0013888870459233254};
  const double e = r * r * horner(series, r) + r;
  const double z = (e + t.second) * t.first;
  return scaled_sum(t.first, z, m + p);
}

/// The full range with one rounding: what the lanes leave out, to HA accuracy at every level.
inline int vdexp_cout_rare(const double* px, double* py) {
  const double x = *px;
  const uint32_t exponent = bits_of(x) >> 52 & 0x7FF;
  if (exponent == 0x7FF) {
    *py = bits_of(x) == bits_of(-__builtin_inf()) ? 0.0 : x * x;
    return QEM_STATUS_OK;
  }
  if (exponent <= 0x3CA) {  // below 2^-53
    *py = x + 1.0;
    return QEM_STATUS_OK;
  }
  if (x > 0x1.62E42FEFA39EFp9) {  // 709.78
    const double largest = opaque(Format<double>::largest);
    *py = largest * largest;
    return QEM_STATUS_OVERFLOW;
  }
  if (x < -0x1.74910D52D3051p9) {  // -745.13
    const double smallest = opaque(0x1.0000000000001p-1022);
    *py = smallest * smallest;
    return QEM_STATUS_UNDERFLOW;
  }

  *py = exp_times_power(x, 0);
  const bool normal = x >= -0x1.6232BDD7ABCD2p9;  // -708.396
  return normal ? QEM_STATUS_OK : QEM_STATUS_UNDERFLOW;
}

template <Level level>
struct DExp {
  using T = double;
  static constexpr int block = 8;
  static constexpr char _QEM_THISFUNC_NAME[] = "vdExp";
  static constexpr Environment environment = environment_mode;

  template <class V>
  static int rare(V x) {
    return high_word_above(x, vdexp_data<level>::rare_above);
  }

  static int slow(const double* x, double* y) { return vdexp_cout_rare(x, y); }

  template <class V>
  static V lane(V x) {
    return exp_lane<vdexp_data<level>, level>(x);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
