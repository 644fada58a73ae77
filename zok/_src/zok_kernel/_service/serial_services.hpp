// SPDX-License-Identifier: MIT
// Thread services of the calling thread alone, for an entry that another calls inside: from an item
// of work, or for little of it.
#pragma once

#include "orv/ss.h"

namespace orv {
inline namespace ORV_TAG {

inline constexpr SSThreadServices serial_services = {
    [](int32_t items, int32_t, void* args, SSItemFunction function) {
      for (int32_t i = 0; i < items; ++i) function(i, 0, 1, args);
    },
    [](int32_t items, int32_t, void* args, SSItemFunction function) {
      for (int32_t i = 0; i < items; ++i) function(i, 0, 1, args);
    },
    [](int32_t threads, void* args, SSItemFunction function) {
      for (int32_t t = 0; t < threads; ++t) function(t, 0, threads, args);
    },
    [](int32_t item, int32_t thread, int32_t threads, void* args, SSItemFunction function) {
      function(item, thread, threads, args);
    },
    [] { return int32_t{1}; }};

}  // namespace ORV_TAG
}  // namespace orv
