// SPDX-License-Identifier: MIT
#include "complex_abs.hpp"

void orv_qem_kernel_zAbs_W7HAynn(int32_t n, const QemComplexDouble* a, double* r) {
  orv::guarded(orv::ZAbs{}, n, a, r);
}
