// SPDX-License-Identifier: MIT
#include "div.hpp"

void orv_qem_kernel_sDiv_G9HAynn(int32_t n, const float* a, const float* b, float* r) {
  orv::guarded(orv::Div<float, 8>{}, n, a, b, r);
}
