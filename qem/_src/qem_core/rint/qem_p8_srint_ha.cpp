// SPDX-License-Identifier: MIT
#include "../_heap/real/to_whole.hpp"
#include "../frame/padded.hpp"

void orv_qem_kernel_sRint_P8HAynn(int32_t n, const float* a, float* r) {
  orv::padded<orv::ToWhole<float, _MM_FROUND_RINT>>(n, a, r);
}
