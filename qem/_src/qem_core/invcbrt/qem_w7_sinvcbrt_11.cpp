// SPDX-License-Identifier: MIT
#include "invcbrt.hpp"

void orv_qem_kernel_sInvCbrt_W7EPnnn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::InvCbrt<float, orv::Level::EP>{}, n, a, r);
}
