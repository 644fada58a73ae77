// SPDX-License-Identifier: MIT
#include "cosh.hpp"

void orv_qem_kernel_sCosh_G9EPnnn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::Cosh<float, orv::Level::EP>{}, n, a, r);
}
