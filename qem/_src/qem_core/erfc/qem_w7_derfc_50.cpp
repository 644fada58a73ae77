// SPDX-License-Identifier: MIT
#include "erfc.hpp"

void orv_qem_kernel_dErfc_W7LAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::Erfc<double, orv::Level::LA>{}, n, a, r);
}
