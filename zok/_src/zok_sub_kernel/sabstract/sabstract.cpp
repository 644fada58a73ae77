// SPDX-License-Identifier: MIT
// Abstract streams of floats.
#include "../_service/abstract.hpp"

using namespace orv;

static_assert(sizeof(void*) == 8 || sizeof(AbstractState<float>) == 28);

int32_t __zoksNewAbstractStream(StreamState** stream, int32_t n, float* buffer, float a, float b,
                                AbstractFloats callback) {
  return create_abstract<float>(stream, BRNG_SABSTRACT, 10, {&n, buffer, &a, &b, callback});
}

int32_t __zokBRngsAbstractInitStream(int32_t method, StreamState* stream, int32_t,
                                     const uint32_t* params) {
  return init_abstract<float>(method, stream, params);
}

int32_t __zoksBRngsAbstract(StreamState* stream, int32_t n, float* r, float a, float b) {
  return draw_abstract_in_range(stream, n, r, a, b);
}

int32_t __zokdBRngsAbstract(StreamState*, int32_t, double*, double, double) {
  return RNG_ABSTRACT_BAD_FLAVOUR;
}
int32_t __zokiBRngsAbstract(StreamState*, int32_t, uint32_t*) { return RNG_ABSTRACT_BAD_FLAVOUR; }
