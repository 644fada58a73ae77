// SPDX-License-Identifier: MIT
#include "modf.hpp"

void orv_qem_kernel_dModf_W7HAynn(int32_t n, const double* a, double* r1, double* r2) {
  orv::guarded(orv::Modf<double, 4>{}, n, a, r1, r2);
}
