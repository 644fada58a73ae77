// SPDX-License-Identifier: MIT
#include "dlog1p.hpp"

void orv_qem_kernel_dLog1p_V8EPnnn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::DLog1p<orv::Level::EP>{}, n, a, r);
}
