// SPDX-License-Identifier: MIT
#include "erfcinv.hpp"

void orv_qem_kernel_sErfcInv_W7EPnnn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::InverseError<orv::ErfcInv, float, orv::Level::EP>{}, n, a, r);
}
