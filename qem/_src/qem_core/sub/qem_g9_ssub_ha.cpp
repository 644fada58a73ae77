// SPDX-License-Identifier: MIT
#include "sub.hpp"

void orv_qem_kernel_sSub_G9HAynn(int32_t n, const float* a, const float* b, float* r) {
  orv::elementwise<orv::Sub<float>>(n, r, a, b);
}
