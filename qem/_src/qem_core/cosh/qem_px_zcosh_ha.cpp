// SPDX-License-Identifier: MIT
#include "../_heap/complex/scalar_kernels.hpp"

using namespace orv;

void orv_qem_kernel_zCosh_PXHAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r) {
  scalar_calls(
      ScalarRoutine<QemComplexDouble, orv_qem_kernel_ccosh_scalar, "Cosh", Reports::overflow>{}, n,
      a, r);
}
