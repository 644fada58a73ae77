// SPDX-License-Identifier: MIT
#include "atanh.hpp"

void orv_qem_kernel_dAtanh_W7LAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::Atanh<double, orv::Level::LA>{}, n, a, r);
}
