// SPDX-License-Identifier: MIT
#include <orv/qem.h>

#include "../frame/moves.hpp"

void orv_qem_kernel_sUnpackV_PXHAynn(int64_t n, const float* a, float* y, const void* iy,
                                     int32_t narrow) {
  orv::unpack_indexed(narrow, n, a, y, iy);
}
