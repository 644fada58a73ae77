// SPDX-License-Identifier: MIT
#include "pow2o3.hpp"

void orv_qem_kernel_dPow2o3_W7EPnnn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::Pow2o3<double, orv::Level::EP>{}, n, a, r);
}
