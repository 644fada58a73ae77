// SPDX-License-Identifier: MIT
// Floor, Ceil, Trunc, Rint and NearbyInt: a whole number by the processor's rounding instruction.
#pragma once

#include "../../simd/vectors.hpp"

namespace orv {
inline namespace ORV_TAG {

/// The immediate is that of to_whole.
template <class Element, int immediate>
struct ToWhole {
  using T = Element;
  static constexpr int block = 32 / sizeof(T);

  template <class V>
  static V lane(V x) {
    return to_whole<immediate>(x);
  }
};

}  // namespace ORV_TAG
}  // namespace orv
