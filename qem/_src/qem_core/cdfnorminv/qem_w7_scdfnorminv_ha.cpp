// SPDX-License-Identifier: MIT
#include "cdfnorminv.hpp"

void orv_qem_kernel_sCdfNormInv_W7HAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::InverseError<orv::CdfNormInv, float, orv::Level::HA>{}, n, a, r);
}
