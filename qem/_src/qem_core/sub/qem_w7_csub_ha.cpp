// SPDX-License-Identifier: MIT
#include "../add/complex_sum.hpp"

void orv_qem_kernel_cSub_W7HAynn(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b,
                                 QemComplexFloat* r) {
  orv::guarded(orv::ComplexSum<QemComplexFloat, true>{}, n, a, b, r);
}
