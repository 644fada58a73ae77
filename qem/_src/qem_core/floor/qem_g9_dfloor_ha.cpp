// SPDX-License-Identifier: MIT
#include "../_heap/real/to_whole.hpp"
#include "../frame/elementwise.hpp"

void orv_qem_kernel_dFloor_G9HAynn(int32_t n, const double* a, double* r) {
  orv::elementwise<orv::ToWhole<double, _MM_FROUND_FLOOR>>(n, r, a);
}
