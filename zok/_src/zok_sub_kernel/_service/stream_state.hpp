// SPDX-License-Identifier: MIT
// A stream's block as a generator sees it: the header, then the generator's own state record.
#pragma once

#include <orv/zok.h>
#include <stdint.h>

namespace orv {

/// What a generator's InitStream is asked for.
enum Method : int32_t { seed_stream = 0, leapfrog_stream = 1, skip_ahead_stream = 2 };

/// The answer to a method other than seeding: these generators can't be moved along.
inline int32_t refuse_method(int32_t method) {
  switch (method) {
    case leapfrog_stream:
      return RNG_LEAPFROG_UNSUPPORTED;
    case skip_ahead_stream:
      return RNG_SKIPAHEAD_UNSUPPORTED;
    default:
      return RNG_BAD_METHOD;
  }
}

/// InitStream of a generator that can be moved along.
template <class Seed, class Leapfrog, class SkipAhead>
int32_t begin_stream(int32_t method, Seed seed, Leapfrog leapfrog, SkipAhead skip_ahead) {
  switch (method) {
    case seed_stream:
      seed();
      return RNG_OK;
    case leapfrog_stream:
      leapfrog();
      return RNG_OK;
    case skip_ahead_stream:
      skip_ahead();
      return RNG_OK;
    default:
      return RNG_BAD_METHOD;
  }
}

/// The state record behind the header.
template <class State>
State& state_of(StreamState* stream) {
  static_assert(sizeof(StreamState) == 16);
  return *reinterpret_cast<State*>(stream + 1);
}

/// The upper half of a number that is extended to 64 bits with its sign.
inline uint32_t high_word(int32_t n) { return n < 0 ? 0xFFFFFFFF : 0; }

}  // namespace orv
