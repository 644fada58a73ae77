// SPDX-License-Identifier: MIT
#include "dsin.hpp"

void orv_qem_kernel_dSin_G9HAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::DSin<orv::Level::HA>{}, n, a, r);
}
