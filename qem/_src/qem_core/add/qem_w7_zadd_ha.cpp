// SPDX-License-Identifier: MIT
#include "complex_sum.hpp"

void orv_qem_kernel_zAdd_W7HAynn(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b,
                                 QemComplexDouble* r) {
  orv::guarded(orv::ComplexSum<QemComplexDouble, false>{}, n, a, b, r);
}
