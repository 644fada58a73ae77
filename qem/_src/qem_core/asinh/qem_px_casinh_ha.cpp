// SPDX-License-Identifier: MIT
#include "../_heap/complex/scalar_kernels.hpp"

using namespace orv;

void orv_qem_kernel_cAsinh_PXHAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r) {
  scalar_calls(ScalarRoutine<QemComplexFloat, _qem_casinhf_scalar, "Asinh">{}, n, a, r);
}
