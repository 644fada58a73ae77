// SPDX-License-Identifier: MIT
// Elements in memory and their lanes. A complex number is two vectors, one of real parts and one of
// imaginary parts; a float may be computed in lanes of double.
#pragma once

#include <orv/qem.h>

#include "../simd/vectors.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class E>
struct ElementTraits {
  using Part = E;
  static constexpr int parts = 1;
};
template <>
struct ElementTraits<QemComplexFloat> {
  using Part = float;
  static constexpr int parts = 2;
};
template <>
struct ElementTraits<QemComplexDouble> {
  using Part = double;
  static constexpr int parts = 2;
};

/// What an element is made of, and of how many.
template <class E>
using Part = typename ElementTraits<E>::Part;
template <class E>
inline constexpr int parts = ElementTraits<E>::parts;

template <class E>
const Part<E>* parts_of(const E* p) {
  return reinterpret_cast<const Part<E>*>(p);
}
template <class E>
Part<E>* parts_of(E* p) {
  return reinterpret_cast<Part<E>*>(p);
}

// ---- Numbers to lanes and back -----------------------------------------------------------------

template <class V>
V load_numbers(const Lane<V>* p) {
  return load<V>(p);
}
template <class V>
void store_numbers(Lane<V>* p, V v) {
  store(p, v);
}

/// Floats in lanes of double.
template <class V>
V load_numbers(const float* p) requires wide_lanes<V> {
  return load_widened(p, V{});
}
template <class V>
void store_numbers(float* p, V v) requires wide_lanes<V> {
  store_narrowed(p, v);
}

// ---- Elements to lanes and back ----------------------------------------------------------------
//
// Part j of lanes<V> elements is in x[j][k]; or, with `in_turn`, the first half of their numbers as
// they lie in memory is in x[0][k] and the rest in x[1][k].

template <bool in_turn, class V, class E, int vectors>
void load_elements(const E* p, V (*x)[vectors], int k) {
  if constexpr (parts<E> == 1) {
    x[0][k] = load_numbers<V>(p);
  } else {
    const V a = load_numbers<V>(parts_of(p)), b = load_numbers<V>(parts_of(p) + lanes<V>);
    if constexpr (in_turn) {
      x[0][k] = a, x[1][k] = b;
    } else {
      deinterleave(a, b, x[0][k], x[1][k]);
    }
  }
}

template <bool in_turn, class V, class E, int vectors>
void store_elements(E* p, const V (*y)[vectors], int k) {
  if constexpr (parts<E> == 1) {
    store_numbers<V>(p, y[0][k]);
  } else {
    V a = y[0][k], b = y[1][k];
    if constexpr (!in_turn) interleave(y[0][k], y[1][k], a, b);
    store_numbers<V>(parts_of(p), a);
    store_numbers<V>(parts_of(p) + lanes<V>, b);
  }
}

/// One element, whatever its parts, in all lanes, the parts in turn.
template <class V, class E>
V repeat(const E* p) {
  if constexpr (parts<E> == 1) {
    return splat<V>(load_one(p));
  } else if constexpr (sizeof(E) == sizeof(V)) {
    return load<V>(parts_of(p));
  } else {
    double both;
    memcpy(&both, p, sizeof both);
    return _mm_castpd_ps(_mm_set1_pd(both));
  }
}

/// One element in all lanes.
template <bool in_turn, class V, class E, int vectors>
void fill_elements(const E* p, V (*x)[vectors], int k) {
  for (int j = 0; j < parts<E>; ++j) {
    if constexpr (in_turn) {
      x[j][k] = repeat<V>(p);
    } else {
      x[j][k] = splat<V>(load_one(parts_of(p) + j));
    }
  }
}
/// The same vector, all of which the compiler has to compute: where it sees just one lane stored it
/// may leave zeros in the others, and divisions by them raise flags.
template <class V>
V all_lanes(V v) {
  asm("" : "+x"(v));
  return v;
}

/// The element of the lowest lanes.
template <bool in_turn, class V, class E, int vectors>
void store_first_element(E* p, const V (*y)[vectors], int k) {
  if constexpr (in_turn) {
    memcpy(p, &y[0][k], sizeof(E));
  } else {
    for (int j = 0; j < parts<E>; ++j) store_low(parts_of(p) + j, all_lanes(y[j][k]));
  }
}

/// The mask of elements whose parts, in turn in a and b, have a lane of set bits among them.
template <class V>
int interleaved_mask(V a, V b) {
  V re, im;
  deinterleave(a, b, re, im);
  return mask_of(either(re, im));
}

}  // namespace ORV_TAG
}  // namespace orv
