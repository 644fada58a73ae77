// SPDX-License-Identifier: MIT
#include "invcbrt.hpp"

void orv_qem_kernel_sInvCbrt_W7LAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::InvCbrt<float, orv::Level::LA>{}, n, a, r);
}
