// SPDX-License-Identifier: MIT
// Abstract streams of doubles.
#include "../_service/abstract.hpp"

using namespace orv;

static_assert(sizeof(void*) == 8 || sizeof(AbstractState<double>) == 36);

int32_t __zokdNewAbstractStream(StreamState** stream, int32_t n, double* buffer, double a, double b,
                                AbstractDoubles callback) {
  return create_abstract<double>(stream, BRNG_DABSTRACT, 10, {&n, buffer, &a, &b, callback});
}

int32_t __zokBRngdAbstractInitStream(int32_t method, StreamState* stream, int32_t,
                                     const uint32_t* params) {
  return init_abstract<double>(method, stream, params);
}

int32_t __zokdBRngdAbstract(StreamState* stream, int32_t n, double* r, double a, double b) {
  return draw_abstract_in_range(stream, n, r, a, b);
}

int32_t __zoksBRngdAbstract(StreamState*, int32_t, float*, float, float) {
  return RNG_ABSTRACT_BAD_FLAVOUR;
}
int32_t __zokiBRngdAbstract(StreamState*, int32_t, uint32_t*) { return RNG_ABSTRACT_BAD_FLAVOUR; }
