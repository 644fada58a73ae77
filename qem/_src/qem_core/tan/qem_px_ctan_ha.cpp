// SPDX-License-Identifier: MIT
#include "../_heap/complex/scalar_kernels.hpp"

using namespace orv;

void orv_qem_kernel_cTan_PXHAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r) {
  scalar_calls(ScalarRoutine<QemComplexFloat, _qem_ctanf_scalar, "Tan">{}, n, a, r);
}
