// SPDX-License-Identifier: MIT
#include "dln.hpp"

void orv_qem_kernel_dLn_G9HAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::DLn<orv::Level::HA>{}, n, a, r);
}
