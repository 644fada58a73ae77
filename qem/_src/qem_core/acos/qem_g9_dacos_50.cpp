// SPDX-License-Identifier: MIT
#include "acos.hpp"

void orv_qem_kernel_dAcos_G9LAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::Acos<double, orv::Level::LA>{}, n, a, r);
}
