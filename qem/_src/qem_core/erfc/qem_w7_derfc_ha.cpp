// SPDX-License-Identifier: MIT
#include "erfc.hpp"

void orv_qem_kernel_dErfc_W7HAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::Erfc<double, orv::Level::HA>{}, n, a, r);
}
