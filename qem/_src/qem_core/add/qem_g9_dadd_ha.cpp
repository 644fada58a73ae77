// SPDX-License-Identifier: MIT
#include "add.hpp"

void orv_qem_kernel_dAdd_G9HAynn(int32_t n, const double* a, const double* b, double* r) {
  orv::elementwise<orv::Add<double>>(n, r, a, b);
}
