// SPDX-License-Identifier: MIT
#include "cis.hpp"

void orv_qem_kernel_zCIS_W7HAynn(int32_t n, const double* a, QemComplexDouble* r) {
  orv::guarded(orv::Cis<double, QemComplexDouble>{}, n, a, r);
}
