// SPDX-License-Identifier: MIT
#include "erfc.hpp"

void orv_qem_kernel_sErfc_W7EPnnn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::Erfc<float, orv::Level::EP>{}, n, a, r);
}
