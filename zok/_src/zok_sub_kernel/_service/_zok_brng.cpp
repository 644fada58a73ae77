// SPDX-License-Identifier: MIT
// Identifiers, and what goes from a stream to its generator.
#include "registry.hpp"
#include "stream_state.hpp"

using namespace orv;

namespace {

/// The WH family's numbers among the low identifiers; they share a row.
constexpr int32_t first_low_wh = 4;
constexpr int32_t last_low_wh = 276;

}  // namespace

BrngProperties* __zokGetBrngBaseOffset(int32_t brng, int32_t* row, int32_t* offset) {
  if (brng >= row_step) {
    *row = brng / row_step - 1;
    *offset = brng % row_step;
    return __RegBrngsNew;
  }
  const bool wh = brng >= first_low_wh && brng <= last_low_wh;
  *row = wh ? first_low_wh : brng;
  *offset = wh ? brng - first_low_wh : 0;
  return __RegBrngs;
}

int32_t __zokIsBrngValid(const BrngProperties* table, int32_t row, int32_t offset) {
  const bool valid =
      table == __RegBrngs ? row < NRegBrngs : row < NRegBrngsNew && offset < NumOffsets[row];
  return valid ? RNG_OK : RNG_INVALID_BRNG;
}

int32_t __zokGetStreamStateBrng(StreamState* stream) { return stream->Brng; }

int32_t __zokLeapfrogStream(StreamState* stream, int32_t k, int32_t nstreams) {
  if (nstreams < 0) return RNG_BAD_NSTREAMS;
  const auto index = static_cast<uint32_t>(k);
  return generator(stream->Brng).InitStream(leapfrog_stream, stream, nstreams, &index);
}

int32_t __zokSkipAheadStream(StreamState* stream, int64_t nskip) {
  const auto count = static_cast<uint64_t>(nskip);
  const uint32_t words[] = {static_cast<uint32_t>(count), static_cast<uint32_t>(count >> 32)};
  return generator(stream->Brng).InitStream(skip_ahead_stream, stream, 2, words);
}
