// SPDX-License-Identifier: MIT
#include "cbrt.hpp"

void orv_qem_kernel_dCbrt_W7LAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::Cbrt<double, orv::Level::LA>{}, n, a, r);
}
