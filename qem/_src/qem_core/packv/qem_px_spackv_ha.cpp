// SPDX-License-Identifier: MIT
#include <orv/qem.h>

#include "../frame/moves.hpp"

void orv_qem_kernel_sPackV_PXHAynn(int64_t n, const float* a, const void* ia, float* y,
                                   int32_t narrow) {
  orv::pack_indexed(narrow, n, a, ia, y);
}
