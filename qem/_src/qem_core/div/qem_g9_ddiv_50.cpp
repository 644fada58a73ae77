// SPDX-License-Identifier: MIT
#include "div.hpp"

void orv_qem_kernel_dDiv_G9LAynn(int32_t n, const double* a, const double* b, double* r) {
  orv::guarded(orv::Div<double, 16>{}, n, a, b, r);
}
