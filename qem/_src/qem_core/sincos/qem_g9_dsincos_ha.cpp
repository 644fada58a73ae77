// SPDX-License-Identifier: MIT
#include "dsincos.hpp"

void orv_qem_kernel_dSinCos_G9HAynn(int32_t n, const double* a, double* r1, double* r2) {
  orv::guarded(orv::DSinCosKernel<orv::Level::HA>{}, n, a, r1, r2);
}
