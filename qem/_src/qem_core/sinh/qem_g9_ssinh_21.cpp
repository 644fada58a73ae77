// SPDX-License-Identifier: MIT
#include "sinh.hpp"

void orv_qem_kernel_sSinh_G9LAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::Sinh<float, orv::Level::LA>{}, n, a, r);
}
