// SPDX-License-Identifier: MIT
#include <orv/qem.h>

#include "../frame/moves.hpp"

void orv_qem_kernel_dPackI_PXHAynn(int64_t n, const double* a, int64_t incr, double* y,
                                   int32_t narrow) {
  orv::move_strided(narrow, n, a, incr, y, 1);
}
