// SPDX-License-Identifier: MIT
#include "mul.hpp"

void orv_qem_kernel_dMul_G9HAynn(int32_t n, const double* a, const double* b, double* r) {
  orv::elementwise<orv::Mul<double>>(n, r, a, b);
}
