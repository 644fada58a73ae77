// SPDX-License-Identifier: MIT
#include "erfinv.hpp"

void orv_qem_kernel_sErfInv_G9LAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::InverseError<orv::ErfInv, float, orv::Level::LA>{}, n, a, r);
}
