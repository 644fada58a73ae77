// SPDX-License-Identifier: MIT
#include "stan.hpp"

void orv_qem_kernel_sTan_G9EPnnn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::STan<orv::Level::EP>{}, n, a, r);
}
