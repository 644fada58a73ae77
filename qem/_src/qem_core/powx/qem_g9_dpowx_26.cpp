// SPDX-License-Identifier: MIT
#include "powx.hpp"

#include "../pow/dpow.hpp"

void orv_qem_kernel_dPowx_G9EPnnn(int32_t n, const double* a, double b, double* r) {
  orv::powx<orv::Level::EP, orv::DPow>(n, a, b, r);
}
