// SPDX-License-Identifier: MIT
#include "dln.hpp"

void orv_qem_kernel_dLn_G9EPnnn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::DLn<orv::Level::EP>{}, n, a, r);
}
