// SPDX-License-Identifier: MIT
#include "../add/complex_sum.hpp"

void orv_qem_kernel_zSub_W7HAynn(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b,
                                 QemComplexDouble* r) {
  orv::guarded(orv::ComplexSum<QemComplexDouble, true>{}, n, a, b, r);
}
