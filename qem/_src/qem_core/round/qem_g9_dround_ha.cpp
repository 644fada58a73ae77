// SPDX-License-Identifier: MIT
#include "../frame/elementwise.hpp"
#include "round.hpp"

void orv_qem_kernel_dRound_G9HAynn(int32_t n, const double* a, double* r) {
  orv::elementwise<orv::Round<double>>(n, r, a);
}
