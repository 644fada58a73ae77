// SPDX-License-Identifier: MIT
// What the two Log1p share: 1 + x as a sum of two numbers, and the smaller one's part in the
// result.
#pragma once

#include "../ln/table_log.hpp"

namespace orv {
inline namespace ORV_TAG {

template <class Base, Level level, class V>
V log1p_lane(V x) {
  using T = Lane<V>;
  // 1 + x = y + y_lo without error
  const V y = x + T{1};
  const V x_of_y = y - T{1};
  const V y_lo = (T{1} - (y - x_of_y)) + (x - x_of_y);
  const V result = table_log<Base, level>(y, y_lo);
  return either(result, and_bits(x, bits_of(-T{0})));  // the sign of zero
}

}  // namespace ORV_TAG
}  // namespace orv
