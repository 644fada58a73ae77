// SPDX-License-Identifier: MIT
#include "pow3o2.hpp"

void orv_qem_kernel_sPow3o2_W7EPnnn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::Pow3o2<float, orv::Level::EP>{}, n, a, r);
}
