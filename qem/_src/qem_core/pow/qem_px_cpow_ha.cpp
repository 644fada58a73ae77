// SPDX-License-Identifier: MIT
#include "../_heap/complex/scalar_kernels.hpp"

using namespace orv;

void orv_qem_kernel_cPow_PXHAynn(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b,
                                 QemComplexFloat* r) {
  scalar_calls(ScalarRoutine<QemComplexFloat, _qem_cpowf_scalar, "Pow", Reports::overflow>{}, n, a,
               b, r);
}
