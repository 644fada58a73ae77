// SPDX-License-Identifier: MIT
// What slow paths need that compute in the x87 unit.
#pragma once

#include "../../frame/control_words.hpp"
#include "../../simd/vectors.hpp"

namespace orv {
inline namespace ORV_TAG {

/// The x87 unit at its full precision, for kernels that do not ask for it.
inline constexpr Environment environment_slow_lane = {.keeps_sse = true, .x87 = x87_extended};

/// x, or a zero for a denormal that the control words say to flush, which that unit does not heed.
inline double heeding_words(double x) { return x * opaque(1.0); }

}  // namespace ORV_TAG
}  // namespace orv
