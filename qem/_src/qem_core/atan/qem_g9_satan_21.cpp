// SPDX-License-Identifier: MIT
#include "atan.hpp"

void orv_qem_kernel_sAtan_G9LAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::Atan<float, orv::Level::LA>{}, n, a, r);
}
