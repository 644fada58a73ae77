// SPDX-License-Identifier: MIT
#include "slog10.hpp"

void orv_qem_kernel_sLog10_G9LAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::SLog10<orv::Level::LA>{}, n, a, r);
}
