// SPDX-License-Identifier: MIT
#include "cdfnorm.hpp"

void orv_qem_kernel_dCdfNorm_G9EPnnn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::CdfNorm<double, orv::Level::EP>{}, n, a, r);
}
