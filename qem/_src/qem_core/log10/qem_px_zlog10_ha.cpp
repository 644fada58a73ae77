// SPDX-License-Identifier: MIT
#include "../_heap/complex/scalar_kernels.hpp"

using namespace orv;

void orv_qem_kernel_zLog10_PXHAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r) {
  scalar_calls(ScalarRoutine<QemComplexDouble, orv_qem_kernel_clog10_scalar, "Log10">{}, n, a, r);
}
