// SPDX-License-Identifier: MIT
#include "ssin.hpp"

void orv_qem_kernel_sSin_G9HAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::SSin<orv::Level::HA>{}, n, a, r);
}
