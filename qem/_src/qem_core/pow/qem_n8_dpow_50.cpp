// SPDX-License-Identifier: MIT
#include "dpow.hpp"

void orv_qem_kernel_dPow_N8LAynn(int32_t n, const double* a, const double* b, double* r) {
  orv::guarded(orv::DPow<orv::Level::LA>{}, n, a, b, r);
}
