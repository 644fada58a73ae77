// SPDX-License-Identifier: MIT
#include "abs.hpp"

void orv_qem_kernel_sAbs_W7HAynn(int32_t n, const float* a, float* r) {
  orv::padded<orv::Abs<float, 8>>(n, a, r);
}
