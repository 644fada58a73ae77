// SPDX-License-Identifier: MIT
#include <orv/qem.h>

#include "../frame/moves.hpp"

void orv_qem_kernel_sUnpackI_PXHAynn(int64_t n, const float* a, float* y, int64_t incr,
                                     int32_t narrow) {
  orv::move_strided(narrow, n, a, 1, y, incr);
}
