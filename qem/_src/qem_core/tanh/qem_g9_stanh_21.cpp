// SPDX-License-Identifier: MIT
#include "tanh.hpp"

void orv_qem_kernel_sTanh_G9LAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::Tanh<float, orv::Level::LA>{}, n, a, r);
}
