// SPDX-License-Identifier: MIT
#include "mul_by_conj.hpp"

void orv_qem_kernel_zMulByConj_W7HAynn(int32_t n, const QemComplexDouble* a,
                                       const QemComplexDouble* b, QemComplexDouble* r) {
  orv::guarded(orv::MulByConj<orv::ZMul>{}, n, a, b, r);
}
