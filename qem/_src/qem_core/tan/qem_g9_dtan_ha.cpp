// SPDX-License-Identifier: MIT
#include "dtan.hpp"

void orv_qem_kernel_dTan_G9HAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::DTan<orv::Level::HA>{}, n, a, r);
}
