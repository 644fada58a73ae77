// SPDX-License-Identifier: MIT
#include "mul.hpp"

void orv_qem_kernel_sMul_G9HAynn(int32_t n, const float* a, const float* b, float* r) {
  orv::elementwise<orv::Mul<float>>(n, r, a, b);
}
