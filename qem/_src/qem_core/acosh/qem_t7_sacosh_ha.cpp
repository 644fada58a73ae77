// SPDX-License-Identifier: MIT
#include "acosh.hpp"

void orv_qem_kernel_sAcosh_T7HAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::Acosh<float, orv::Level::HA>{}, n, a, r);
}
