// sTan: the tangent of floats.
#pragma once

#include "../_heap/real/ssincos.hpp"
#include "../frame/guarded.hpp"

namespace orv {
inline namespace ORV_TAG {

/// The quotient of sine and cosine as LA has them misses 4 ulp by little, so LA has that of HA.
constexpr Level stan_quarter(Level level) { return level == Level::EP ? level : Level::HA; }

template <Level level>
struct STan : SAngleKernel<stan_quarter(level)> {
  static constexpr int block = level == Level::HA ? 8 : 16;
  static constexpr char _QEM_THISFUNC_NAME[] = "vsTan";

  template <class V>
  static V lane(V x) {
    return tangent_of(quarter_of<stan_quarter(level)>(x));
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
