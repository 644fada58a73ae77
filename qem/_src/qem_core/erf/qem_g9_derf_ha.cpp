// SPDX-License-Identifier: MIT
#include "derf.hpp"

void orv_qem_kernel_dErf_G9HAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::DErf<orv::Level::HA>{}, n, a, r);
}
