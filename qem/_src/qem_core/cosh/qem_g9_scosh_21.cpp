// SPDX-License-Identifier: MIT
#include "cosh.hpp"

void orv_qem_kernel_sCosh_G9LAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::Cosh<float, orv::Level::LA>{}, n, a, r);
}
