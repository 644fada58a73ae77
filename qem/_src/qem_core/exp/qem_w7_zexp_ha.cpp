// SPDX-License-Identifier: MIT
#include "complex_exp.hpp"

void orv_qem_kernel_zExp_W7HAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r) {
  orv::guarded(orv::ZExp{}, n, a, r);
}
