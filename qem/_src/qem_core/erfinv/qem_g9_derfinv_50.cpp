// SPDX-License-Identifier: MIT
#include "erfinv.hpp"

void orv_qem_kernel_dErfInv_G9LAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::InverseError<orv::ErfInv, double, orv::Level::LA>{}, n, a, r);
}
