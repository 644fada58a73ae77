// SPDX-License-Identifier: MIT
// LinearFrac: (scalea a + shifta)/(scaleb b + shiftb), each operation rounded once. With scaleb 0
// the reciprocal of shiftb is computed once for all elements.
#pragma once

#include <orv/qem.h>

#include "../frame/elementwise.hpp"

namespace orv {
inline namespace ORV_TAG {

/// (scale a + shift) t
template <class Element>
struct LinearTimes {
  using T = Element;
  T scale, shift, t;

  template <class V>
  V lane(V a) const {
    return (scale * a + shift) * t;
  }
};

/// number/(scale b + shift)
template <class Element>
struct OverLinear {
  using T = Element;
  T number, scale, shift;

  template <class V>
  V lane(V b) const {
    return number / (scale * b + shift);
  }
};

template <class Element>
struct LinearOverLinear {
  using T = Element;
  T scalea, shifta, scaleb, shiftb;

  template <class V>
  V lane(V a, V b) const {
    return (scalea * a + shifta) / (scaleb * b + shiftb);
  }
};

/// A vector whose scale is 0 is not read.
template <class T>
void linear_frac(const Environment& environment, int32_t n, const T* a, const T* b, T scalea,
                 T shifta, T scaleb, T shiftb, T* r) {
  const ControlWords words(environment);
  // What depends on the scalars is computed under the words set just now.
  const LinearOverLinear<T> all = {opaque(scalea), opaque(shifta), opaque(scaleb), opaque(shiftb)};
  if (all.scaleb == 0) {
    elementwise_here(LinearTimes<T>{all.scalea, all.shifta, 1 / all.shiftb}, n, r, a);
  } else if (all.scalea == 0) {
    elementwise_here(OverLinear<T>{all.shifta, all.scaleb, all.shiftb}, n, r, b);
  } else {
    elementwise_here(all, n, r, a, b);
  }
}

}  // namespace ORV_TAG
}  // namespace orv
