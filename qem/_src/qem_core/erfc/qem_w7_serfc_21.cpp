// SPDX-License-Identifier: MIT
#include "erfc.hpp"

void orv_qem_kernel_sErfc_W7LAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::Erfc<float, orv::Level::LA>{}, n, a, r);
}
