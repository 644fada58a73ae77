// SPDX-License-Identifier: MIT
#include "dtan.hpp"

void orv_qem_kernel_dTan_G9LAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::DTan<orv::Level::LA>{}, n, a, r);
}
