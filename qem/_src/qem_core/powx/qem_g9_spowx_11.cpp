// SPDX-License-Identifier: MIT
#include "powx.hpp"

#include "../pow/spow.hpp"

void orv_qem_kernel_sPowx_G9EPnnn(int32_t n, const float* a, float b, float* r) {
  orv::powx<orv::Level::EP, orv::SPow>(n, a, b, r);
}
