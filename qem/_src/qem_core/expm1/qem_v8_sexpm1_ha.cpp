// SPDX-License-Identifier: MIT
#include "sexpm1.hpp"

void orv_qem_kernel_sExpm1_V8HAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::SExpm1<orv::Level::HA>{}, n, a, r);
}
