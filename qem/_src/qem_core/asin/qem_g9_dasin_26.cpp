// SPDX-License-Identifier: MIT
#include "asin.hpp"

void orv_qem_kernel_dAsin_G9EPnnn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::Asin<double, orv::Level::EP>{}, n, a, r);
}
