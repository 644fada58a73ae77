// SPDX-License-Identifier: MIT
#include "atanh.hpp"

void orv_qem_kernel_sAtanh_W7EPnnn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::Atanh<float, orv::Level::EP>{}, n, a, r);
}
