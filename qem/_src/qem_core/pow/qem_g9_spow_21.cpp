// SPDX-License-Identifier: MIT
#include "spow.hpp"

void orv_qem_kernel_sPow_G9LAynn(int32_t n, const float* a, const float* b, float* r) {
  orv::guarded(orv::SPow<orv::Level::LA>{}, n, a, b, r);
}
