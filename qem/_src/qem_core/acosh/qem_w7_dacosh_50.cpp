// SPDX-License-Identifier: MIT
#include "acosh.hpp"

void orv_qem_kernel_dAcosh_W7LAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::Acosh<double, orv::Level::LA>{}, n, a, r);
}
