// SPDX-License-Identifier: MIT
#include "../frame/elementwise.hpp"
#include "round.hpp"

void orv_qem_kernel_sRound_G9HAynn(int32_t n, const float* a, float* r) {
  orv::elementwise<orv::Round<float>>(n, r, a);
}
