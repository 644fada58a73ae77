// SPDX-License-Identifier: MIT
#include "atanh.hpp"

void orv_qem_kernel_sAtanh_W7LAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::Atanh<float, orv::Level::LA>{}, n, a, r);
}
