// SPDX-License-Identifier: MIT
#include "atan2.hpp"

void orv_qem_kernel_sAtan2_G9EPnnn(int32_t n, const float* a, const float* b, float* r) {
  orv::guarded(orv::Atan2<float, orv::Level::EP>{}, n, a, b, r);
}
