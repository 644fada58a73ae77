// SPDX-License-Identifier: MIT
#include "acos.hpp"

void orv_qem_kernel_dAcos_G9EPnnn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::Acos<double, orv::Level::EP>{}, n, a, r);
}
