// SPDX-License-Identifier: MIT
#include "sqr.hpp"

void orv_qem_kernel_sSqr_G9HAynn(int32_t n, const float* a, float* r) {
  orv::elementwise<orv::Sqr<float>>(n, r, a);
}
