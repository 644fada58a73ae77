// SPDX-License-Identifier: MIT
// What Asin and Acos share.
//
// 2 asin(h/2) = h + h z P(z) with z = h^2 up to 1. With v = |x| up to 1/2, h = 2v gives asin v, and
// above, h = sqrt(2 - 2v) gives acos v: one polynomial for the arc, asin v on the inside and acos v
// on the outside, and multiples of pi/2 for the rest of both functions.
//
// HA has the root in two parts, the second by what the square of the first leaves of 2 - 2v, the
// multiples of pi/2 in two parts, and P less 1/32, as a product with a power of two is exact.
#pragma once

#include <orv/qem.h>

#include "../../frame/function_name.hpp"
#include "../../frame/guarded.hpp"
#include "../../frame/level.hpp"
#include "root.hpp"
#include "tables/arcsine_polynomials.hpp"

namespace orv {
inline namespace ORV_TAG {

/// HA of floats has lanes of double, and so the formula of the other levels.
template <class T, Level level>
struct arcsine_data;
template <>
struct arcsine_data<double, Level::HA> {
  using Work = double;
  static constexpr bool in_parts = true;
  static constexpr const auto& polynomial = vdarcsine_ha;
};
template <>
struct arcsine_data<double, Level::LA> {
  using Work = double;
  static constexpr bool in_parts = false;
  static constexpr const auto& polynomial = vdarcsine_la;
};
template <>
struct arcsine_data<double, Level::EP> {
  using Work = double;
  static constexpr bool in_parts = false;
  static constexpr const auto& polynomial = vdarcsine_ep;
};
template <>
struct arcsine_data<float, Level::HA> {
  using Work = double;
  static constexpr bool in_parts = false;
  static constexpr const auto& polynomial = vsarcsine_ha;
};
template <>
struct arcsine_data<float, Level::LA> {
  using Work = float;
  static constexpr bool in_parts = false;
  static constexpr const auto& polynomial = vsarcsine_la;
};
template <>
struct arcsine_data<float, Level::EP> {
  using Work = float;
  static constexpr bool in_parts = false;
  static constexpr const auto& polynomial = vsarcsine_ep;
};

/// pi/2 in two parts.
template <class T>
struct HalfPi;
template <>
struct HalfPi<double> {
  static constexpr double hi = 0x1.921FB54442D18p0, lo = 0x1.1A62633145C07p-54;
};
template <>
struct HalfPi<float> {
  static constexpr float hi = 0x1.921FB6p0f, lo = -0x1.777A5Cp-25f;
};

/// c[from] + c[from + 1] x + ... up to before c[to]: fours of terms, and pairs in them, as chains
/// of single terms would be too long. The upper part comes first, so that it alone is held
/// meanwhile.
template <int from, int to, class C, class V>
V by_fours(const C& c, V x, V x2, V x4) {
  constexpr int terms = to - from, lower = terms > 4 ? 4 : terms > 2 ? 2 : 1;
  if constexpr (terms == 1) {
    return splat<V>(c[from]);
  } else {
    const V power = lower == 4 ? x4 : lower == 2 ? x2 : x;
    const V upper = by_fours<from + lower, to>(c, x, x2, x4) * power;
    return by_fours<from, from + lower>(c, x, x2, x4) + upper;
  }
}
template <class C, int n, class V>
V by_fours(const C (&c)[n], V x) {
  const V x2 = x * x;
  return by_fours<0, n>(c, x, x2, x2 * x2);
}

template <class V>
V with_sign(V v, V x) {
  return either(v, and_bits(x, bits_of(-Lane<V>{0})));
}

/// The arc, on the inside with the sign of x, less the multiple of pi/2 that `multiple` makes of a
/// part of pi/2. The multiple is 0 or above the arc.
template <class D, class V, class F>
V arc_less(V x, F multiple) {
  using T = Lane<V>;
  using Pi = HalfPi<T>;
  const V v = absolute(x), twice = v + v, rest = T{2} - twice;
  const V outside = greater(v, splat<V>(T{0.5}));
  constexpr T tiny = sizeof(T) == sizeof(float) ? 0x1p-26 : 0x1p-60;  // no power of z underflows
  const V z = by_sign(outside, rest, twice * twice + tiny);
  const V root = square_root(rest), h = by_sign(outside, root, x);
  const V right = multiple(outside, Pi::hi);
  if constexpr (D::in_parts) {
    const V upper = upper_half(root);
    const V lower = both(outside, (rest - upper * upper) / (root + upper));
    const V p = by_fours(D::polynomial, z);
    const V hi = by_sign(outside, upper, x), cube = h * z, main = cube * (1 / 32.0);
    const V left = hi - right, lost = hi - (left + right);
    const V y = left + main, y_lost = main - (y - left);
    return y + ((((lower - multiple(outside, Pi::lo)) + lost) + y_lost) + cube * p);
  } else {
    return (h + h * (z * by_fours(D::polynomial, z))) - right;
  }
}

/// What the kernels of both functions share.
template <class Element, Level level>
struct ArcKernel {
  using T = Element;
  using Work = typename arcsine_data<T, level>::Work;
  static constexpr int block = 8;
  static constexpr Environment environment = environment_mode;

  template <class V>
  static int rare(V x) {
    return high_word_above(x, Format<Lane<V>>::high_word(1) - 1);
  }
};

/// A magnitude of 1 or more, or NaN. Returns a status code.
template <class T>
int arc_of_rare(T x, T* y, T at_one) {
  const T zero = opaque(T{0});
  const bool is_one = x == 1 || x == -1, is_number = x == x;
  *y = is_one ? at_one : is_number ? zero / zero : x * x;
  return is_number && !is_one ? QEM_STATUS_DOMAIN : QEM_STATUS_OK;
}

}  // namespace ORV_TAG
}  // namespace orv
