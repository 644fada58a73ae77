// SPDX-License-Identifier: MIT
#include "dexp.hpp"

void orv_qem_kernel_dExp_G9EPnnn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::DExp<orv::Level::EP>{}, n, a, r);
}
