// SPDX-License-Identifier: MIT
#include "../_heap/complex/scalar_kernels.hpp"

using namespace orv;

void orv_qem_kernel_zPow_PXHAynn(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b,
                                 QemComplexDouble* r) {
  scalar_calls(
      ScalarRoutine<QemComplexDouble, orv_qem_kernel_cpow_scalar, "Pow", Reports::overflow>{}, n, a,
      b, r);
}
