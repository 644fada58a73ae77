// SPDX-License-Identifier: MIT
#include "tanh.hpp"

void orv_qem_kernel_dTanh_G9EPnnn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::Tanh<double, orv::Level::EP>{}, n, a, r);
}
