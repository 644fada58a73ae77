// SPDX-License-Identifier: MIT
#include "asinh.hpp"

void orv_qem_kernel_dAsinh_W7LAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::Asinh<double, orv::Level::LA>{}, n, a, r);
}
