// SPDX-License-Identifier: MIT
#include "stan.hpp"

void orv_qem_kernel_sTan_G9LAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::STan<orv::Level::LA>{}, n, a, r);
}
