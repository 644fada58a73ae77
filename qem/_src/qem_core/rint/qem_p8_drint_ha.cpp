// SPDX-License-Identifier: MIT
#include "../_heap/real/to_whole.hpp"
#include "../frame/padded.hpp"

void orv_qem_kernel_dRint_P8HAynn(int32_t n, const double* a, double* r) {
  orv::padded<orv::ToWhole<double, _MM_FROUND_RINT>>(n, a, r);
}
