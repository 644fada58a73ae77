// SPDX-License-Identifier: MIT
#include "dlog10.hpp"

void orv_qem_kernel_dLog10_G9HAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::DLog10<orv::Level::HA>{}, n, a, r);
}
