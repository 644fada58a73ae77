// SPDX-License-Identifier: MIT
#include "invcbrt.hpp"

void orv_qem_kernel_dInvCbrt_W7HAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::InvCbrt<double, orv::Level::HA>{}, n, a, r);
}
