// SPDX-License-Identifier: MIT
#include "ssincos.hpp"

void orv_qem_kernel_sSinCos_G9LAynn(int32_t n, const float* a, float* r1, float* r2) {
  orv::guarded(orv::SSinCosKernel<orv::Level::LA>{}, n, a, r1, r2);
}
