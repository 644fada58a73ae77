// SPDX-License-Identifier: MIT
#include "slog1p.hpp"

void orv_qem_kernel_sLog1p_G9LAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::SLog1p<orv::Level::LA>{}, n, a, r);
}
