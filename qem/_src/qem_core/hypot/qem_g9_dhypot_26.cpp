// SPDX-License-Identifier: MIT
#include "hypot.hpp"

void orv_qem_kernel_dHypot_G9EPnnn(int32_t n, const double* a, const double* b, double* r) {
  orv::guarded(orv::Hypot<double, orv::Level::EP>{}, n, a, b, r);
}
