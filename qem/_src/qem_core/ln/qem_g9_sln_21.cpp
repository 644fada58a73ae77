// SPDX-License-Identifier: MIT
#include "sln.hpp"

void orv_qem_kernel_sLn_G9LAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::SLn<orv::Level::LA>{}, n, a, r);
}
