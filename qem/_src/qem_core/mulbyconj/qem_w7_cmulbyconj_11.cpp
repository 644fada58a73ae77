// SPDX-License-Identifier: MIT
#include "mul_by_conj.hpp"

void orv_qem_kernel_cMulByConj_W7EPnnn(int32_t n, const QemComplexFloat* a,
                                       const QemComplexFloat* b, QemComplexFloat* r) {
  orv::guarded(orv::MulByConj<orv::ComplexMul<QemComplexFloat>>{}, n, a, b, r);
}
