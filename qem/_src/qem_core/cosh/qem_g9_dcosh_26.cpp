// SPDX-License-Identifier: MIT
#include "cosh.hpp"

void orv_qem_kernel_dCosh_G9EPnnn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::Cosh<double, orv::Level::EP>{}, n, a, r);
}
