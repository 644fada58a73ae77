// SPDX-License-Identifier: MIT
#include "complex_mul.hpp"

void orv_qem_kernel_zMul_W7HAynn(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b,
                                 QemComplexDouble* r) {
  orv::guarded(orv::ZMul{}, n, a, b, r);
}
