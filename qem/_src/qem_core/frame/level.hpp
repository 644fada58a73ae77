// SPDX-License-Identifier: MIT
#pragma once

namespace orv {

/// Accuracy levels: each function's formula is one template over them.
enum class Level { LA, HA, EP };

}  // namespace orv
