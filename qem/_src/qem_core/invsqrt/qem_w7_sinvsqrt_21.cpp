// SPDX-License-Identifier: MIT
#include "invsqrt.hpp"

void orv_qem_kernel_sInvSqrt_W7LAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::InvSqrt<float, orv::Level::LA>{}, n, a, r);
}
