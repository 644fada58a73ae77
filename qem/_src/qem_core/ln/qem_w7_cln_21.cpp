// SPDX-License-Identifier: MIT
#include "complex_ln.hpp"

void orv_qem_kernel_cLn_W7LAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r) {
  orv::guarded(orv::CLn<orv::Level::LA>{}, n, a, r);
}
