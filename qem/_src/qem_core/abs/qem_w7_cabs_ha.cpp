// SPDX-License-Identifier: MIT
#include "complex_abs.hpp"

void orv_qem_kernel_cAbs_W7HAynn(int32_t n, const QemComplexFloat* a, float* r) {
  orv::guarded(orv::CAbs{}, n, a, r);
}
