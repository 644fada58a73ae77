// SPDX-License-Identifier: MIT
#include <orv/qem.h>

#include "../frame/moves.hpp"

void orv_qem_kernel_dPackV_PXHAynn(int64_t n, const double* a, const void* ia, double* y,
                                   int32_t narrow) {
  orv::pack_indexed(narrow, n, a, ia, y);
}
