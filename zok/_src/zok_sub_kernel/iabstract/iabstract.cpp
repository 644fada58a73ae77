// SPDX-License-Identifier: MIT
// Abstract streams of words.
#include "../_service/abstract.hpp"

using namespace orv;

static_assert(sizeof(void*) == 8 || sizeof(AbstractState<uint32_t>) == 20);

int32_t __zokiNewAbstractStream(StreamState** stream, int32_t n, uint32_t* buffer,
                                AbstractWords callback) {
  return create_abstract<uint32_t>(stream, BRNG_IABSTRACT, 6, {&n, buffer, callback});
}

int32_t __zokBRngiAbstractInitStream(int32_t method, StreamState* stream, int32_t,
                                     const uint32_t* params) {
  return init_abstract<uint32_t>(method, stream, params);
}

int32_t __zokiBRngiAbstract(StreamState* stream, int32_t n, uint32_t* r) {
  return draw_abstract_words(stream, n, r);
}

int32_t __zoksBRngiAbstract(StreamState*, int32_t, float*, float, float) {
  return RNG_ABSTRACT_BAD_FLAVOUR;
}
int32_t __zokdBRngiAbstract(StreamState*, int32_t, double*, double, double) {
  return RNG_ABSTRACT_BAD_FLAVOUR;
}
