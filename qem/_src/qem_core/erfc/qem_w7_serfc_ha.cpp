// SPDX-License-Identifier: MIT
#include "erfc.hpp"

void orv_qem_kernel_sErfc_W7HAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::Erfc<float, orv::Level::HA>{}, n, a, r);
}
