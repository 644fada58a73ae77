// SPDX-License-Identifier: MIT
#include "erfinv.hpp"

void orv_qem_kernel_dErfInv_G9HAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::InverseError<orv::ErfInv, double, orv::Level::HA>{}, n, a, r);
}
