// SPDX-License-Identifier: MIT
#include "scos.hpp"

void orv_qem_kernel_sCos_G9EPnnn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::SCos<orv::Level::EP>{}, n, a, r);
}
