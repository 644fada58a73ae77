// SPDX-License-Identifier: MIT
#include "cis.hpp"

void orv_qem_kernel_cCIS_W7HAynn(int32_t n, const float* a, QemComplexFloat* r) {
  orv::guarded(orv::Cis<float, QemComplexFloat>{}, n, a, r);
}
