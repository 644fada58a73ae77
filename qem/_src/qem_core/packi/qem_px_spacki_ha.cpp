// SPDX-License-Identifier: MIT
#include <orv/qem.h>

#include "../frame/moves.hpp"

void orv_qem_kernel_sPackI_PXHAynn(int64_t n, const float* a, int64_t incr, float* y,
                                   int32_t narrow) {
  orv::move_strided(narrow, n, a, incr, y, 1);
}
