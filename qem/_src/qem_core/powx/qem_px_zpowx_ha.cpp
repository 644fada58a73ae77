// SPDX-License-Identifier: MIT
#include "../_heap/complex/scalar_kernels.hpp"

using namespace orv;

void orv_qem_kernel_zPowx_PXHAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble b,
                                  QemComplexDouble* r) {
  using Routine =
      ScalarRoutine<QemComplexDouble, orv_qem_kernel_cpow_scalar, "Powx", Reports::overflow>;
  scalar_calls(SecondFixed<Routine>{b}, n, a, r);
}
