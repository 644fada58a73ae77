// SPDX-License-Identifier: MIT
#include "add.hpp"

void orv_qem_kernel_sAdd_G9HAynn(int32_t n, const float* a, const float* b, float* r) {
  orv::elementwise<orv::Add<float>>(n, r, a, b);
}
