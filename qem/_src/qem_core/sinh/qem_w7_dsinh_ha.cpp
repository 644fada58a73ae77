// SPDX-License-Identifier: MIT
#include "sinh.hpp"

void orv_qem_kernel_dSinh_W7HAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::Sinh<double, orv::Level::HA>{}, n, a, r);
}
