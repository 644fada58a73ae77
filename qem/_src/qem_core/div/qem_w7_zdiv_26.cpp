// SPDX-License-Identifier: MIT
#include "complex_div.hpp"

void orv_qem_kernel_zDiv_W7EPnnn(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b,
                                 QemComplexDouble* r) {
  orv::guarded(orv::ComplexDiv<QemComplexDouble>{}, n, a, b, r);
}
