// SPDX-License-Identifier: MIT
#include "../_heap/real/to_whole.hpp"
#include "../frame/elementwise.hpp"

void orv_qem_kernel_sFloor_G9HAynn(int32_t n, const float* a, float* r) {
  orv::elementwise<orv::ToWhole<float, _MM_FROUND_FLOOR>>(n, r, a);
}
