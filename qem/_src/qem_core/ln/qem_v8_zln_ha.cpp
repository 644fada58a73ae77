// SPDX-License-Identifier: MIT
#include "complex_ln.hpp"

void orv_qem_kernel_zLn_V8HAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r) {
  orv::guarded(orv::ZLn<orv::Level::HA>{}, n, a, r);
}
