// SPDX-License-Identifier: MIT
#include "../_heap/complex/scalar_kernels.hpp"

using namespace orv;

void orv_qem_kernel_zAcos_PXHAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r) {
  scalar_calls(ScalarRoutine<QemComplexDouble, orv_qem_kernel_cacos_scalar, "Acos">{}, n, a, r);
}
