// SPDX-License-Identifier: MIT
// Puts the program's own allocators in front of the service layer's and of malloc, counts, and
// makes one allocation fail. Link the library orv_failing_allocator into a test to use it.
#pragma once

#include <stddef.h>

namespace orv_test {

/// What the calling thread asked for since watch_allocations(). Only its calls count and fail.
struct Allocations {
  int asked = 0;     // allocations
  int open = 0;      // of these, not yet released by this thread
  size_t bytes = 0;  // asked for in all
};

/// Counts from here on. The allocation number `failing` (from 1) returns 0; 0 lets all succeed.
void watch_allocations(int failing = 0);

/// Ends it, and tells what was seen.
Allocations seen_allocations();

}  // namespace orv_test
