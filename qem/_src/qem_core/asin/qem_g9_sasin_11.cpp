// SPDX-License-Identifier: MIT
#include "asin.hpp"

void orv_qem_kernel_sAsin_G9EPnnn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::Asin<float, orv::Level::EP>{}, n, a, r);
}
