// SPDX-License-Identifier: MIT
#include "complex_div.hpp"

void orv_qem_kernel_cDiv_W7EPnnn(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b,
                                 QemComplexFloat* r) {
  orv::guarded(orv::ComplexDiv<QemComplexFloat>{}, n, a, b, r);
}
