// SPDX-License-Identifier: MIT
#include "abs.hpp"

void orv_qem_kernel_dAbs_N8HAynn(int32_t n, const double* a, double* r) {
  orv::padded<orv::Abs<double, 4>>(n, a, r);
}
