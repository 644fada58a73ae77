// SPDX-License-Identifier: MIT
#include "invsqrt.hpp"

void orv_qem_kernel_dInvSqrt_W7HAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::InvSqrt<double, orv::Level::HA>{}, n, a, r);
}
