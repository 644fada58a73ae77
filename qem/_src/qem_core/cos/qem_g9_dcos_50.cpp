// SPDX-License-Identifier: MIT
#include "dcos.hpp"

void orv_qem_kernel_dCos_G9LAynn(int32_t n, const double* a, double* r) {
  orv::guarded(orv::DCos<orv::Level::LA>{}, n, a, r);
}
