// SPDX-License-Identifier: MIT
#include "complex_sqrt.hpp"

void orv_qem_kernel_cSqrt_N8LAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r) {
  orv::guarded(orv::CSqrt<orv::Level::LA>{}, n, a, r);
}
