// SPDX-License-Identifier: MIT
#include "cdfnorminv.hpp"

void orv_qem_kernel_dCdfNormInv_W7LAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::InverseError<orv::CdfNormInv, double, orv::Level::LA>{}, n, a, r);
}
