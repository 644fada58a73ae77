// SPDX-License-Identifier: MIT
// A generator's integers as it makes them.
#include "../../../zok_sub_kernel/_service/registry.hpp"

using namespace orv;

int32_t _zokiRngUniformBits(int32_t, StreamState* stream, int32_t n, uint32_t* r) {
  return generator(stream->Brng).iBRng(stream, n, r);
}
