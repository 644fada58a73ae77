// SPDX-License-Identifier: MIT
#include "dsin.hpp"

void orv_qem_kernel_dSin_G9EPnnn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::DSin<orv::Level::EP>{}, n, a, r);
}
