// SPDX-License-Identifier: MIT
// Extended arithmetic (80 bits, x87) for functions of doubles.
#pragma once

#include <qem/_src/qem_core/frame/control_words.hpp>
#include <qem/_src/qem_core/simd/vectors.hpp>

namespace orv {
inline namespace ORV_TAG {

using Extended = long double;

/// f of doubles, rounded to one, under the control words that extended arithmetic needs. Arguments
/// and result don't cross them.
template <class F, class... Numbers>
double in_extended(F f, Numbers... x) {
  const ControlWords words(environment_extended);
  return opaque(static_cast<double>(f(opaque(x)...)));
}

}  // namespace ORV_TAG
}  // namespace orv
