// SPDX-License-Identifier: MIT
#include "acos.hpp"

void orv_qem_kernel_sAcos_G9HAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::Acos<float, orv::Level::HA>{}, n, a, r);
}
