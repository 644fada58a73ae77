// SPDX-License-Identifier: MIT
#include "conj.hpp"

void orv_qem_kernel_cConj_W7HAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r) {
  orv::padded<orv::Conj<QemComplexFloat, 4>>(n, a, r);
}
