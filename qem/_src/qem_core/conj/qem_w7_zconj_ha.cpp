// SPDX-License-Identifier: MIT
#include "conj.hpp"

void orv_qem_kernel_zConj_W7HAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r) {
  orv::padded<orv::Conj<QemComplexDouble, 2>>(n, a, r);
}
