// SPDX-License-Identifier: MIT
#include "arg.hpp"

void orv_qem_kernel_cArg_W7HAynn(int32_t n, const QemComplexFloat* a, float* r) {
  orv::guarded(orv::Arg<QemComplexFloat, orv::Level::HA>{}, n, a, r);
}
