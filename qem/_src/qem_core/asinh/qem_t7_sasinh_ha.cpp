// SPDX-License-Identifier: MIT
#include "asinh.hpp"

void orv_qem_kernel_sAsinh_T7HAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::Asinh<float, orv::Level::HA>{}, n, a, r);
}
