// SPDX-License-Identifier: MIT
// sTan: the tangent of floats.
#pragma once

#include "../_heap/real/ssincos.hpp"
#include "../frame/guarded.hpp"

namespace orv {
inline namespace ORV_TAG {

/// HA and EP divide sine and cosine as these levels have them. At LA that would miss 4 ulp by
/// little; a polynomial of the tangent itself rounds less, and is needed for one angle only.
template <Level level>
struct STan : SAngleKernel<level> {
  static constexpr int block = level == Level::HA ? 8 : 16;
  static constexpr char _QEM_THISFUNC_NAME[] = "vsTan";

  template <class V>
  static V lane(V x) {
    if constexpr (level == Level::LA) {
      const auto [k, r, excess] = rest_of<level>(x);
      constexpr const auto& c = vstan_la;
      const V v = r * r + 0x1p-50f;  // the sum for tiny r, so that no product underflows
      const V v2 = v * v;
      const V p = (c[0] + c[1] * v) + v2 * ((c[2] + c[3] * v) + v2 * (c[4] + c[5] * v));
      const V tangent = r - (excess - r * v * p);
      return select_odd(k, -1.0f / tangent, tangent);
    } else {
      return tangent_of(quarter_of<level>(x));
    }
  }

  static int slow(const float* x, float* y) {
    if (__builtin_isinf(*x)) {
      *y = -__builtin_nanf("");
      return QEM_STATUS_DOMAIN;
    }
    if (*x != *x) {
      *y = *x * *x;
    } else {
      store_low(y, tangent_of(far_quarter_of<__m128d>(*x)));
    }
    return QEM_STATUS_OK;
  }
};

}  // namespace ORV_TAG
}  // namespace orv
