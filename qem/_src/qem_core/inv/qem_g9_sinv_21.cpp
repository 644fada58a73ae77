// SPDX-License-Identifier: MIT
#include "inv.hpp"

void orv_qem_kernel_sInv_G9LAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::Inv<float, 8>{}, n, a, r);
}
