// SPDX-License-Identifier: MIT
#include "sqr.hpp"

void orv_qem_kernel_dSqr_G9HAynn(int32_t n, const double* a, double* r) {
  orv::elementwise<orv::Sqr<double>>(n, r, a);
}
