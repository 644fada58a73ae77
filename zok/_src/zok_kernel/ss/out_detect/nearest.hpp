// SPDX-License-Identifier: MIT
// The observations of least distance.
#pragma once

#include <stdint.h>

namespace orv {
inline namespace ORV_TAG {

/// Observations as a heap: the first one has the largest distance, and of equal ones comes last.
template <class T>
struct FarthestFirst {
  const T* distances;
  intptr_t* heap;
  intptr_t count;

  bool after(intptr_t i, intptr_t k) const {
    return distances[i] > distances[k] || (distances[i] == distances[k] && i > k);
  }

  /// Moves the observation at a place down to where it belongs.
  void sink(intptr_t place) const {
    const intptr_t moved = heap[place];
    for (;;) {
      intptr_t below = 2 * place + 1;
      if (below + 1 < count && after(heap[below + 1], heap[below])) ++below;
      if (below >= count || !after(heap[below], moved)) break;
      heap[place] = heap[below];
      place = below;
    }
    heap[place] = moved;
  }
};

/// Finds those of n observations that have the `count` least distances, of equal ones the earlier.
/// No distance is a NaN.
template <class T>
void find_nearest(const T* distances, intptr_t n, intptr_t* found, intptr_t count) {
  const FarthestFirst<T> nearest = {distances, found, count};
  for (intptr_t i = 0; i < count; ++i) found[i] = i;
  for (intptr_t place = count / 2; place-- > 0;) nearest.sink(place);
  for (intptr_t i = count; i < n; ++i) {
    if (!(distances[i] < distances[found[0]])) continue;
    found[0] = i;
    nearest.sink(0);
  }
}

}  // namespace ORV_TAG
}  // namespace orv
