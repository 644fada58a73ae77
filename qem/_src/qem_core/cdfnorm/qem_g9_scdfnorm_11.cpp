// SPDX-License-Identifier: MIT
#include "cdfnorm.hpp"

void orv_qem_kernel_sCdfNorm_G9EPnnn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::CdfNorm<float, orv::Level::EP>{}, n, a, r);
}
