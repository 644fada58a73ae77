// SPDX-License-Identifier: MIT
#include "acosh.hpp"

void orv_qem_kernel_sAcosh_W7LAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::Acosh<float, orv::Level::LA>{}, n, a, r);
}
