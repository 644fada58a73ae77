// SPDX-License-Identifier: MIT
#include "pow3o2.hpp"

void orv_qem_kernel_dPow3o2_W7LAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::Pow3o2<double, orv::Level::LA>{}, n, a, r);
}
