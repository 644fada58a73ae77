// SPDX-License-Identifier: MIT
#include "atan2.hpp"

void orv_qem_kernel_dAtan2_G9LAynn(int32_t n, const double* a, const double* b, double* r) {
  orv::guarded(orv::Atan2<double, orv::Level::LA>{}, n, a, b, r);
}
