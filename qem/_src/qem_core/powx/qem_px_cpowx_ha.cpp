// SPDX-License-Identifier: MIT
#include "../_heap/complex/scalar_kernels.hpp"

using namespace orv;

void orv_qem_kernel_cPowx_PXHAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat b,
                                  QemComplexFloat* r) {
  using Routine = ScalarRoutine<QemComplexFloat, _qem_cpowf_scalar, "Powx", Reports::overflow>;
  scalar_calls(SecondFixed<Routine>{b}, n, a, r);
}
