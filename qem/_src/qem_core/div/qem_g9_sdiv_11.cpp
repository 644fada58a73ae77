// SPDX-License-Identifier: MIT
// EP reports nothing: a zero divisor gives an infinity or NaN.
#include "../frame/elementwise.hpp"
#include "div.hpp"

void orv_qem_kernel_sDiv_G9EPnnn(int32_t n, const float* a, const float* b, float* r) {
  orv::elementwise<orv::Div<float, 8>>(n, r, a, b);
}
