// SPDX-License-Identifier: MIT
// Acos: the arccosine.
#pragma once

#include "../_heap/real/arcsine.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class T>
int acos_cout_rare(T x, T* y) {
  return arc_of_rare(x, y, x < 0 ? 2 * (opaque(HalfPi<T>::hi) + HalfPi<T>::lo) : T{0});
}
inline int vdacos_cout_rare(const double* x, double* y) { return acos_cout_rare(*x, y); }
inline int vsacos_cout_rare(const float* x, float* y) { return acos_cout_rare(*x, y); }

/// On the inside what the arc, with its sign, lacks to a right angle; on the outside the arc, or
/// what it lacks to two right angles.
template <class Element, Level level>
struct Acos : ArcKernel<Element, level> {
  static constexpr FunctionName<Element> _QEM_THISFUNC_NAME = "Acos";

  template <class V>
  static V lane(V x) {
    using D = arcsine_data<Element, level>;
    const auto multiple = [x](V outside, Lane<V> part) {
      return by_sign(outside, by_sign(x, splat<V>(2 * part), V{}), splat<V>(part));
    };
    return absolute(arc_less<D>(x, multiple));
  }

  static int slow(const double* x, double* y) { return vdacos_cout_rare(x, y); }
  static int slow(const float* x, float* y) { return vsacos_cout_rare(x, y); }
};

}  // namespace ORV_TAG
}  // namespace orv
