// SPDX-License-Identifier: MIT
// Doubles and floats on [a, b): the gate through which every other distribution draws. n goes to
// the generator also below 1, where two of them make an element all the same.
#include "../../../zok_sub_kernel/_service/registry.hpp"

using namespace orv;

namespace {

/// The generator's rounding may leave [a, b]; this brings it back. A NaN stays.
template <class T>
void clamp(int32_t n, T* r, T a, T b) {
  for (int32_t i = 0; i < n; ++i) {
    const T x = a > r[i] ? a : r[i];
    r[i] = b < x ? b : x;
  }
}

template <class T, class Draw>
int32_t uniform(int32_t method, StreamState* stream, Draw draw, int32_t n, T* r, T a, T b) {
  const int32_t status = (generator(stream->Brng).*draw)(stream, n, r, a, b);
  if (status >= 0 && (method & RNG_ACCURATE) != 0) clamp(n, r, a, b);
  return status;
}

}  // namespace

int32_t _zokdRngUniform(int32_t method, StreamState* stream, int32_t n, double* r, double a,
                        double b) {
  return uniform(method, stream, &BrngProperties::dBRng, n, r, a, b);
}

int32_t _zoksRngUniform(int32_t method, StreamState* stream, int32_t n, float* r, float a,
                        float b) {
  return uniform(method, stream, &BrngProperties::sBRng, n, r, a, b);
}
