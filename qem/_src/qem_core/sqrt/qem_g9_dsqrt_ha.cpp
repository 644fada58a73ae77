// SPDX-License-Identifier: MIT
#include "sqrt.hpp"

void orv_qem_kernel_dSqrt_G9HAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::Sqrt<double>{}, n, a, r);
}
