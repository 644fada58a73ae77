// SPDX-License-Identifier: MIT
#include "inv.hpp"

void orv_qem_kernel_dInv_G9LAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::Inv<double, 16>{}, n, a, r);
}
