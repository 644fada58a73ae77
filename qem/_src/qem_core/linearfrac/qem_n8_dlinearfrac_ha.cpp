// SPDX-License-Identifier: MIT
// Keeps denormals whatever the thread's mode says, unlike the float form.
#include "linearfrac.hpp"

void orv_qem_kernel_dLinearFrac_N8HAynn(int32_t n, const double* a, const double* b, double scalea,
                                        double shifta, double scaleb, double shiftb, double* r) {
  orv::linear_frac(orv::environment_nearest, n, a, b, scalea, shifta, scaleb, shiftb, r);
}
