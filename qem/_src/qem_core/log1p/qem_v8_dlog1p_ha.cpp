// SPDX-License-Identifier: MIT
#include "dlog1p.hpp"

void orv_qem_kernel_dLog1p_V8HAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::DLog1p<orv::Level::HA>{}, n, a, r);
}
