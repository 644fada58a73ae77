// SPDX-License-Identifier: MIT
#include "complex_div.hpp"

void orv_qem_kernel_cDiv_W7HAynn(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b,
                                 QemComplexFloat* r) {
  orv::guarded(orv::CDiv{}, n, a, b, r);
}
