// SPDX-License-Identifier: MIT
#include "sqrt.hpp"

void orv_qem_kernel_sSqrt_G9HAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::Sqrt<float>{}, n, a, r);
}
