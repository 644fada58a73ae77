// SPDX-License-Identifier: MIT
#include "complex_sqrt.hpp"

void orv_qem_kernel_zSqrt_V8HAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r) {
  orv::guarded(orv::ZSqrt{}, n, a, r);
}
