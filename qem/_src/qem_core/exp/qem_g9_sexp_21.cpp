// SPDX-License-Identifier: MIT
#include "sexp.hpp"

void orv_qem_kernel_sExp_G9LAynn(int32_t n, const float* a, float* r) {
  orv::guarded(orv::SExp<orv::Level::LA>{}, n, a, r);
}
