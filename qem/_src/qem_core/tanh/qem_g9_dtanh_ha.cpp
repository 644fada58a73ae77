// SPDX-License-Identifier: MIT
#include "tanh.hpp"

void orv_qem_kernel_dTanh_G9HAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::Tanh<double, orv::Level::HA>{}, n, a, r);
}
