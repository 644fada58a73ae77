// SPDX-License-Identifier: MIT
// Tanh: the hyperbolic tangent, odd to the bit. Nothing is reported.
//
// |x| = c + r with c from a table, the middle of a 32nd of a binade; t = tanh r from a polynomial:
//
//   tanh |x| = tanh c + (1 - tanh^2 c) t/(1 + t tanh c)
//
// Below 1/16, c is 0 and what remains is t. HA has tanh c in two parts. LA and EP of floats are
// quotients of exponentials.
#pragma once

#include "../_heap/real/power_of_e.hpp"
#include "../frame/function_name.hpp"
#include "tables/vdtanh_tables.hpp"
#include "tables/vstanh_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class T>
struct TanhData;
template <>
struct TanhData<double> {
  static constexpr double last = 20;        // from here on the result is 1
  static constexpr int row_shift = 20 - 5;  // the bits of the exponent's word above tell the row
  static constexpr const auto& table = vdtanh_table_in_parts;
  static constexpr const auto& series = vdtanh_series;
};
template <>
struct TanhData<float> {
  static constexpr float last = 9.25f;
  static constexpr int row_shift = 23 - 5;
  static constexpr const auto& table = vstanh_table_in_parts;
  static constexpr const auto& series = vstanh_series;
};

template <class E, Level level>
struct Tanh {
  using T = E;
  using Data = TanhData<T>;
  static constexpr int block = sizeof(T) == sizeof(double) ? 8 : 16;
  static constexpr FunctionName<T> _QEM_THISFUNC_NAME = "Tanh";
  static constexpr Environment environment = environment_mode;

  template <class V>
  static int rare(V) {
    return 0;
  }
  static int slow(const T*, T*) { return QEM_STATUS_OK; }

  template <class V>
  static V lane(V x) {
    const V positive = absolute(x), sign = exclusive(x, positive);
    const V v = minimum(splat<V>(Data::last), positive);  // a NaN stays
    if constexpr (level == Level::HA) {
      V row[4];
      lookup(Data::table, Rows<V>(v), row);
      const V t = tangent(v - row[0], Data::series);
      return either(row[1] + (row[2] + row[3] * t / (1 + row[1] * t)), sign);
    } else if constexpr (sizeof(T) == sizeof(float)) {
      return either(tanh_by_quotient<T, level>(v), sign);
    } else {
      V c, y;
      lookup(vdtanh_table, Rows<V>(v), c, y);
      const V r = v - c;
      const V t = level == Level::EP ? tangent(r, vdtanh_ep_series) : tangent(r, vdtanh_series);
      return either(y + (1 - y * y) * t / (1 + y * t), sign);
    }
  }

 private:
  /// Everything below 1/16, a NaN too, has the row of the last 32nd before, row 0.
  static constexpr T row_0 = 0x1.F8p-5f;
  template <class V>
  struct Rows
      : IndicesInHighWord<V, Data::row_shift, (Format<T>::high_word(row_0) >> Data::row_shift)> {
    explicit Rows(V v) : Rows::IndicesInHighWord(maximum(v, splat<V>(row_0))) {}
  };

  /// The lower limit keeps powers of r from vanishing.
  template <class V, int n>
  static V tangent(V r, const T (&series)[n]) {
    const V r2 = maximum(r * r, splat<V>(0x1p-60));
    return r + r * r2 * by_pairs(series, r2);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
