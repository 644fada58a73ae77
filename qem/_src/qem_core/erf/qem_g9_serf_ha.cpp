// SPDX-License-Identifier: MIT
#include "serf.hpp"

void orv_qem_kernel_sErf_G9HAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::SErf<orv::Level::HA>{}, n, a, r);
}
