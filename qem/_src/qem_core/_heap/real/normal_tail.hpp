// SPDX-License-Identifier: MIT
// What Erfc and CdfNorm share: the tail P(a) = e^(-rate a^2) f(a) for a >= 0, and what it leaves of
// the whole on the other side of 0.
//
// f declines slowly, about as 1/(a + 1), and comes from a table of polynomials whose intervals grow
// with a: equal parts of each [2^k, 2^(k + 1)) in which a + 1 + h lies, h being half of the first
// interval, so that row 0 has 0 in its middle. As in Exp, e^(-rate a^2) = 2^(n/64) e^(-rate r). An
// error of a^2 would enter with all its size, so that the upper half of a is squared without one
// and the rest joins r; lanes that have more bits than their results do without.
//
// A function is a record of constants:
//   rate
//   whole              P(a) + P(-a)
//   direction          1 if the tail is that of positive x, otherwise -1
//   zero_above         the last argument of the tail whose result is not zero
//   reports_denormals  as underflow; zeros are reported anyway
//   Slow               the level that slow paths compute with
// and a level of it adds to that and to the scheme of its table, see below:
//   rare_above         greatest high word (float: bit pattern) of |x| for the lanes
//   table              coefficients of f, ascending
//   exponential        (e^(-rate r) - 1)/r, ascending
//   near_zero          (P(0) - P(x))/x in x^2, the first coefficient in two parts; HA only
#pragma once

#include "../../frame/function_name.hpp"
#include "../../frame/guarded.hpp"
#include "../../frame/level.hpp"
#include "../../simd/polynomial.hpp"
#include "root.hpp"
#include "table_rows.hpp"
#include "tables/normal_tail_tables.hpp"

namespace orv {
inline namespace ORV_TAG {

// Schemes of tables:
//   Work           type of the lanes
//   entries, bits  a row is so many Pairs or Quads; 2^bits rows from each power of two to the next
//   in_parts       the first coefficient has two parts, of which the first is short
//   exact_square   the square of a is taken in two parts
struct TailRows {
  using Work = double;
  static constexpr int entries = 5, bits = 5;
  static constexpr bool in_parts = true, exact_square = true;
};
struct ShortTailRows {
  using Work = double;
  static constexpr int entries = 3, bits = 4;
  static constexpr bool in_parts = false, exact_square = false;
};
struct FloatTailRows {
  using Work = float;
  static constexpr int entries = 1, bits = 5;
  static constexpr bool in_parts = false, exact_square = true;
};
struct ShortFloatTailRows {
  using Work = float;
  static constexpr int entries = 1, bits = 5;
  static constexpr bool in_parts = false, exact_square = false;
};

/// 64/ln2, and ln2/64 in parts: a whole number of steps times the first is exact.
template <class T>
struct TailSteps;
template <>
struct TailSteps<double> {
  static constexpr double per_step = 0x1.71547652B82FEp6;
  static constexpr double hi = 0x1.62E42FEFAp-7, lo = 0x1.CF79ABC9E3B3Ap-46;
  static constexpr const auto& table = normal_tail_powers;
};
template <>
struct TailSteps<float> {
  static constexpr float per_step = 92.332482616893656877f;
  static constexpr float hi = 0x1.63p-7f, lo = -3.3155381515825866e-06f;
  static constexpr const auto& table = normal_tail_float_powers;
};

/// The coefficients of f in c; returns what they are multiplied with.
template <class D, class V, int n>
V tail_row(V a, V (&c)[n]) {
  using T = Lane<V>;
  using F = Format<T>;
  using Bits = typename F::Bits;
  constexpr T h = T(1) / (2 << D::bits);
  const V y = a + (1 + h);
  lookup_row(D::table, RowsFromOne<V, D::entries, D::bits>(y), c);
  return a - (and_bits(y, ~Bits{0} << (F::fraction_bits - D::bits)) - T{1});
}

/// f, of a row's coefficients: the first one and the rest.
template <class D, class V, int n>
TwoParts<V> tail_factor(const V (&c)[n], V d) {
  if constexpr (D::in_parts) {
    return {c[0], by_pairs<n - 2>(c + 2, d, d * d) * d + c[1]};
  } else {
    return {c[0], by_pairs<n - 1>(c + 1, d, d * d) * d};
  }
}

/// e^(-rate a^2) as 2^(n/64) (1 + e), n in the low bits of k.
template <class V>
struct TailPower {
  V k, e;
};
template <class D, class V>
TailPower<V> tail_power(V a) {
  using S = TailSteps<Lane<V>>;
  using T = Lane<V>;
  constexpr T shifter = Format<T>::shifter;
  constexpr T rate = D::rate, per_step = S::per_step * rate, hi = S::hi / rate, lo = S::lo / rate;
  const V square = a * a, k = shifter - square * per_step, n = k - shifter;
  V r;
  if constexpr (D::exact_square) {
    const V upper = upper_half(a);
    r = ((upper * upper + n * hi) + n * lo) + (a + upper) * (a - upper);
  } else {
    r = (square + n * hi) + n * lo;
  }
  return {k, horner(D::exponential, r) * r};
}

/// What has to be added to the bits of y for y 2^(n/64), of which the lower six bits of n are done.
template <class V>
Int<V> tail_exponent(V k) {
  using F = Format<Lane<V>>;
  using Bits = typename F::Bits;
  return shift_left<V, F::fraction_bits - 6>(bits_of(and_bits(k, ~Bits{63})));
}

/// P(a) without tail_exponent(k).
template <class D, class V>
TwoParts<V> tail_in_parts(V a, V& k) {
  V c[2 * D::entries], t_hi, t_lo;
  const V d = tail_row<D>(a, c);
  const TwoParts<V> f = tail_factor<D>(c, d);
  const auto [count, e] = tail_power<D>(a);
  lookup(normal_tail_power_parts, Indices<V>(and_bits(count, 63)), t_hi, t_lo);
  k = count;
  const V t_rest = (t_hi + t_lo) * e + t_lo;
  return {f.hi * t_hi, f.hi * t_rest + f.lo * (t_hi + t_rest)};  // the first is exact
}

/// The function where |x| is below 1/32. A step of x changes it by less than the roundings of the
/// table's way do, so that it would step back there; here all that is rounded is far smaller.
template <class D, class V>
V tail_near_zero(V x) {
  constexpr const auto& c = D::near_zero;
  constexpr double center = D::whole / 2.0;
  const V v = exclusive(x, splat<V>(D::direction > 0 ? -0.0 : 0.0)), square = v * v;
  const V upper = upper_half(v), first = upper * c[0], sum = first + center;
  const V more = ((c[5] * square + c[4]) * square + c[3]) * square + c[2];
  const V rest = ((v - upper) * c[0] + v * c[1]) + (v * square) * more;
  return sum + ((first - (sum - center)) + rest);
}

/// Lanes whose result is the whole less P(|x|).
template <class D, class V>
V beyond_of(V x) {
  return D::direction > 0 ? greater(V{}, x) : greater(x, V{});
}

/// P(|x|), or what it leaves of the whole.
template <class D, Level level, class V>
V tail_lane(V x) {
  using T = Lane<V>;
  const V a = and_bits(x, ~sign_bit<T>), beyond = beyond_of<D>(x);
  const V sign = and_bits(beyond, sign_bit<T>);
  if constexpr (level == Level::HA && D::in_parts) {
    V k;
    const TwoParts<V> p = tail_in_parts<D>(a, k);
    const Int<V> exponent = tail_exponent(k);
    const V whole = as_vector<V>(subtract<V>(bits_of(splat<V>(T{D::whole})), exponent));
    const V base = both(beyond, whole), hi = exclusive(p.hi, sign), lo = exclusive(p.lo, sign);
    const V sum = base + hi;
    const V y = sum + (((base - sum) + hi) + lo);
    return as_vector<V>(add<V>(bits_of(y), exponent));
  } else {
    V c[sizeof D::table[0] / sizeof(T) * D::entries];
    const V d = tail_row<D>(a, c);
    const TwoParts<V> f = tail_factor<D>(c, d);
    const auto [k, e] = tail_power<D>(a);
    const V t0 = lookup(TailSteps<T>::table, Indices<V>(and_bits(k, 63)), V{});
    const V t = as_vector<V>(add<V>(bits_of(t0), tail_exponent(k)));
    const V p = t * (f.hi + (f.lo + (f.hi + f.lo) * e));
    return both(beyond, splat<V>(T{D::whole})) + exclusive(p, sign);
  }
}

// ---- Slow paths: small results, infinities and NaN, to HA accuracy at every level -------------

template <class D, class T>
int tail_code(T y) {
  const bool underflow = y == 0 || (D::reports_denormals && y < Format<T>::smallest_normal);
  return underflow ? QEM_STATUS_UNDERFLOW : QEM_STATUS_OK;
}

template <class D>
int tail_cout_rare(const double* px, double* py) {
  const double x = *px, a = __builtin_fabs(x), tiny = opaque(Format<double>::smallest_normal);
  const bool infinite = a == Format<double>::infinity;
  if (x != x) {
    *py = x + x;
  } else if (D::direction * x < 0) {
    *py = infinite ? D::whole : D::whole - tiny;
  } else if (infinite) {
    *py = 0;
  } else if (a > D::zero_above) {
    *py = tiny * tiny;
    return QEM_STATUS_UNDERFLOW;
  } else {
    using V = Narrow<double>;
    V k;
    const TwoParts<V> p = tail_in_parts<typename D::Slow>(splat<V>(a), k);
    const int power = static_cast<int32_t>(bits_of(k[0])) >> 6;
    constexpr double down = 0x1p-100;  // so that the scale is a normal number
    *py = scaled({p.hi[0] * down, p.lo[0] * down}, from_bits(uint64_t(power + 1123) << 52));
    return tail_code<D>(*py);
  }
  return QEM_STATUS_OK;
}

template <class D>
int tail_cout_rare(const float* px, float* py) {
  const double x = *px;
  double y;
  tail_cout_rare<D>(&x, &y);
  *py = static_cast<float>(y);
  return __builtin_isinf(x) ? QEM_STATUS_OK : tail_code<D>(*py);
}

/// A kernel of elements T with the constants D.
template <class Element, class D, Level level>
struct TailKernel {
  using T = Element;
  using Work = typename D::Work;
  static constexpr int block = 64 / sizeof(Work);
  static constexpr Environment environment = environment_mode;

  static int slow(const T* x, T* y) { return tail_cout_rare<D>(x, y); }

  template <class V, size_t vectors>
  static int pass(const V (&x)[1][vectors], V (&y)[1][vectors]) {
    const int rare = by_vector<V, vectors>([&](int k) {
      const V above = lanes_above(x[0][k], D::rare_above);
      y[0][k] = tail_lane<D, level>(select(above, V{}, x[0][k]));
      return mask_of(above);
    });
    if constexpr (level == Level::HA && D::in_parts) renew_near_zero(x[0], y[0]);
    return rare;
  }

 private:
  template <class V, size_t vectors>
  static void renew_near_zero(const V (&x)[vectors], V (&y)[vectors]) {
    const auto near = [&](int k) {
      return greater(splat<V>(Work{1} / 32), and_bits(x[k], ~sign_bit<Work>));
    };
    if (by_vector<V, vectors>([&](int k) { return mask_of(near(k)); }) == 0) [[likely]]
      return;
    for (size_t k = 0; k < vectors; ++k) y[k] = select(near(k), tail_near_zero<D>(x[k]), y[k]);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
