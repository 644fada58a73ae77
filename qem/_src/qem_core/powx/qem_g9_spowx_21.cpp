// SPDX-License-Identifier: MIT
#include "powx.hpp"

#include "../pow/spow.hpp"

void orv_qem_kernel_sPowx_G9LAynn(int32_t n, const float* a, float b, float* r) {
  orv::powx<orv::Level::LA, orv::SPow>(n, a, b, r);
}
