// SPDX-License-Identifier: MIT
#include "erfcinv.hpp"

void orv_qem_kernel_dErfcInv_W7HAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::InverseError<orv::ErfcInv, double, orv::Level::HA>{}, n, a, r);
}
