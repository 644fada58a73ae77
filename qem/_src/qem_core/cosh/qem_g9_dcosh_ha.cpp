// SPDX-License-Identifier: MIT
#include "cosh.hpp"

void orv_qem_kernel_dCosh_G9HAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::Cosh<double, orv::Level::HA>{}, n, a, r);
}
