// SPDX-License-Identifier: MIT
#include "complex_ln.hpp"

void orv_qem_kernel_cLn_W7EPnnn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r) {
  orv::guarded(orv::CLn<orv::Level::EP>{}, n, a, r);
}
