// SPDX-License-Identifier: MIT
// Sine and cosine of one number, with the bits of a lane.
#pragma once

#include "dsincos.hpp"
#include "ssincos.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class T>
struct SinCosOf;
template <>
struct SinCosOf<double> {
  using type = DSinCos;
};
template <>
struct SinCosOf<float> {
  using type = SSinCos;
};
/// The formulas for a type's numbers: rare, lane and far.
template <class T>
using SinCos = typename SinCosOf<T>::type;

/// Any number. Returns a status code: an infinity has no sine.
template <class T>
int _dSinCos(T number, T* sine, T* cosine) {
  const double x = number;
  if (__builtin_isinf(x)) {
    *sine = *cosine = -__builtin_nan("");
    return QEM_STATUS_DOMAIN;
  }
  __m128d s, c;
  const __m128d lanes = _mm_set1_pd(x);
  if (x != x) {
    s = c = lanes * lanes;
  } else if (SinCos<T>::rare(lanes) != 0) {
    SinCos<T>::far(x, s, c);
  } else {
    SinCos<T>::lane(lanes, s, c);
  }
  store_low(sine, s);
  store_low(cosine, c);
  return QEM_STATUS_OK;
}

}  // namespace ORV_TAG
}  // namespace orv
