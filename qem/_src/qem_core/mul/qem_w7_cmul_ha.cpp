// SPDX-License-Identifier: MIT
#include "complex_mul.hpp"

void orv_qem_kernel_cMul_W7HAynn(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b,
                                 QemComplexFloat* r) {
  orv::guarded(orv::CMul{}, n, a, b, r);
}
