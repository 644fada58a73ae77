// SPDX-License-Identifier: MIT
#include "complex_exp.hpp"

void orv_qem_kernel_cExp_W7HAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r) {
  orv::guarded(orv::CExp<orv::Level::HA>{}, n, a, r);
}
