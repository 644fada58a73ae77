// SPDX-License-Identifier: MIT
#include "../_heap/complex/scalar_kernels.hpp"

using namespace orv;

void orv_qem_kernel_cLog10_PXHAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r) {
  scalar_calls(ScalarRoutine<QemComplexFloat, _qem_clog10f_scalar, "Log10">{}, n, a, r);
}
