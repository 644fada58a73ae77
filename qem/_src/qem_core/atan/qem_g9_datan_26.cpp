// SPDX-License-Identifier: MIT
#include "atan.hpp"

void orv_qem_kernel_dAtan_G9EPnnn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::Atan<double, orv::Level::EP>{}, n, a, r);
}
