// SPDX-License-Identifier: MIT
#include "dexp.hpp"

void orv_qem_kernel_dExp_G9LAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::DExp<orv::Level::LA>{}, n, a, r);
}
