// SPDX-License-Identifier: MIT
#include "linearfrac.hpp"

void orv_qem_kernel_sLinearFrac_N8HAynn(int32_t n, const float* a, const float* b, float scalea,
                                        float shifta, float scaleb, float shiftb, float* r) {
  orv::linear_frac(orv::environment_mode, n, a, b, scalea, shifta, scaleb, shiftb, r);
}
