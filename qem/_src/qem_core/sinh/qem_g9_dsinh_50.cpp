// SPDX-License-Identifier: MIT
#include "sinh.hpp"

void orv_qem_kernel_dSinh_G9LAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::Sinh<double, orv::Level::LA>{}, n, a, r);
}
