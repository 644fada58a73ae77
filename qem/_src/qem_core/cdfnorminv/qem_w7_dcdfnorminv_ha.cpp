// SPDX-License-Identifier: MIT
#include "cdfnorminv.hpp"

void orv_qem_kernel_dCdfNormInv_W7HAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::InverseError<orv::CdfNormInv, double, orv::Level::HA>{}, n, a, r);
}
