// SPDX-License-Identifier: MIT
// From an identifier to its generator's row, and to its place there.
#pragma once

#include <orv/zok.h>
#include <stddef.h>

namespace orv {

/// Identifiers from here on are a row's number + 1 times this, plus an offset.
inline constexpr int32_t row_step = 0x100000;

namespace {

/// Each unit's own way to the exported entry.
inline BrngProperties* _GetBrngBaseOffset(int32_t brng, int32_t* row, int32_t* offset) {
  return __zokGetBrngBaseOffset(brng, row, offset);
}

/// The row of an identifier, looked up anew on every use.
inline const BrngProperties& generator(int32_t brng) {
  int32_t row, offset;
  const BrngProperties* const table = _GetBrngBaseOffset(brng, &row, &offset);
  return table[row];
}

/// Which generator of its row an identifier means.
inline int32_t offset_of(int32_t brng) {
  int32_t row, offset;
  _GetBrngBaseOffset(brng, &row, &offset);
  return offset;
}

}  // namespace

/// Bytes of a block behind the header.
inline size_t state_bytes(const BrngProperties& properties) {
  return static_cast<size_t>(properties.StateSize) - sizeof(StreamState);
}

}  // namespace orv
