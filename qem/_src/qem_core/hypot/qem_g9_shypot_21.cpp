// SPDX-License-Identifier: MIT
#include "hypot.hpp"

void orv_qem_kernel_sHypot_G9LAynn(int32_t n, const float* a, const float* b, float* r) {
  orv::guarded(orv::Hypot<float, orv::Level::LA>{}, n, a, b, r);
}
