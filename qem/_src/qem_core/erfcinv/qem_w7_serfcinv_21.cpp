// SPDX-License-Identifier: MIT
#include "erfcinv.hpp"

void orv_qem_kernel_sErfcInv_W7LAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::InverseError<orv::ErfcInv, float, orv::Level::LA>{}, n, a, r);
}
