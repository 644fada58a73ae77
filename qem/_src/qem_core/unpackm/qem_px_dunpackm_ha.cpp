// SPDX-License-Identifier: MIT
#include <orv/qem.h>

#include "../frame/moves.hpp"

void orv_qem_kernel_dUnpackM_PXHAynn(int64_t n, const double* a, double* y, const void* my,
                                     int32_t narrow) {
  orv::unpack_masked(narrow, n, a, y, my);
}
