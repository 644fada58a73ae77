// SPDX-License-Identifier: MIT
#include "tanh.hpp"

void orv_qem_kernel_dTanh_G9LAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::Tanh<double, orv::Level::LA>{}, n, a, r);
}
