// SPDX-License-Identifier: MIT
#include "mul_by_conj.hpp"

void orv_qem_kernel_cMulByConj_W7HAynn(int32_t n, const QemComplexFloat* a,
                                       const QemComplexFloat* b, QemComplexFloat* r) {
  orv::guarded(orv::MulByConj<orv::CMul>{}, n, a, b, r);
}
