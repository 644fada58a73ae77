// SPDX-License-Identifier: MIT
// Asin: the arcsine.
#pragma once

#include "../_heap/real/arcsine.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class T>
int asin_cout_rare(T x, T* y) {
  const T right_angle = opaque(HalfPi<T>::hi) + HalfPi<T>::lo;
  return arc_of_rare(x, y, x < 0 ? -right_angle : right_angle);
}
inline int vdasin_cout_rare(const double* x, double* y) { return asin_cout_rare(*x, y); }
inline int vsasin_cout_rare(const float* x, float* y) { return asin_cout_rare(*x, y); }

/// On the inside the arc, on the outside what it lacks to a right angle.
template <class Element, Level level>
struct Asin : ArcKernel<Element, level> {
  static constexpr FunctionName<Element> _QEM_THISFUNC_NAME = "Asin";

  template <class V>
  static V lane(V x) {
    using D = arcsine_data<Element, level>;
    const auto multiple = [](V outside, Lane<V> part) { return both(outside, splat<V>(part)); };
    return with_sign(absolute(arc_less<D>(x, multiple)), x);
  }

  static int slow(const double* x, double* y) { return vdasin_cout_rare(x, y); }
  static int slow(const float* x, float* y) { return vsasin_cout_rare(x, y); }
};

}  // namespace ORV_TAG
}  // namespace orv
