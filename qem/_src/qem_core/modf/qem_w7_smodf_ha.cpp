// SPDX-License-Identifier: MIT
#include "modf.hpp"

void orv_qem_kernel_sModf_W7HAynn(int32_t n, const float* a, float* r1, float* r2) {
  orv::guarded(orv::Modf<float, 8>{}, n, a, r1, r2);
}
