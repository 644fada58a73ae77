// SPDX-License-Identifier: MIT
#include "sln.hpp"

void orv_qem_kernel_sLn_G9EPnnn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::SLn<orv::Level::EP>{}, n, a, r);
}
