// SPDX-License-Identifier: MIT
#include "complex_sum.hpp"

void orv_qem_kernel_cAdd_W7HAynn(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b,
                                 QemComplexFloat* r) {
  orv::guarded(orv::ComplexSum<QemComplexFloat, false>{}, n, a, b, r);
}
