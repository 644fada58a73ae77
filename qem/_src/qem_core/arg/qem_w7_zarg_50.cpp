// SPDX-License-Identifier: MIT
#include "arg.hpp"

void orv_qem_kernel_zArg_W7LAynn(int32_t n, const QemComplexDouble* a, double* r) {
  orv::guarded(orv::Arg<QemComplexDouble, orv::Level::LA>{}, n, a, r);
}
