// SPDX-License-Identifier: MIT
#include "sub.hpp"

void orv_qem_kernel_dSub_G9HAynn(int32_t n, const double* a, const double* b, double* r) {
  orv::elementwise<orv::Sub<double>>(n, r, a, b);
}
