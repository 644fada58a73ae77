// SPDX-License-Identifier: MIT
#include <orv/qem.h>

#include "../frame/moves.hpp"

void orv_qem_kernel_sPackM_PXHAynn(int64_t n, const float* a, const void* ma, float* y,
                                   int32_t narrow) {
  orv::pack_masked(narrow, n, a, ma, y);
}
