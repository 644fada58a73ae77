// SPDX-License-Identifier: MIT
#include <orv/qem.h>

#include "../frame/moves.hpp"

void orv_qem_kernel_sUnpackM_PXHAynn(int64_t n, const float* a, float* y, const void* my,
                                     int32_t narrow) {
  orv::unpack_masked(narrow, n, a, y, my);
}
