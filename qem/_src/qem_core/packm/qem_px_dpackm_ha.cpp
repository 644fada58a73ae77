// SPDX-License-Identifier: MIT
#include <orv/qem.h>

#include "../frame/moves.hpp"

void orv_qem_kernel_dPackM_PXHAynn(int64_t n, const double* a, const void* ma, double* y,
                                   int32_t narrow) {
  orv::pack_masked(narrow, n, a, ma, y);
}
