// SPDX-License-Identifier: MIT
#include "dexpm1.hpp"

void orv_qem_kernel_dExpm1_V8LAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::DExpm1<orv::Level::LA>{}, n, a, r);
}
