// SPDX-License-Identifier: MIT
// The error call of a kernel, by element type. The second input is never passed on: the first one
// stands in both places.
#pragma once

#include "../errors/errors.hpp"

namespace orv {
inline namespace ORV_TAG {

inline void report(int32_t code, int32_t index, const float* a, float* r1, float* r2,
                   const char* name) {
  orv_qem_kernel_sError(code, index, a, a, r1, r2, name);
}
inline void report(int32_t code, int32_t index, const double* a, double* r1, double* r2,
                   const char* name) {
  orv_qem_kernel_dError(code, index, a, a, r1, r2, name);
}
inline void report(int32_t code, int32_t index, const QemComplexFloat* a, QemComplexFloat* r1,
                   QemComplexFloat* r2, const char* name) {
  orv_qem_kernel_cError(code, index, a, a, r1, r2, name);
}
inline void report(int32_t code, int32_t index, const QemComplexDouble* a, QemComplexDouble* r1,
                   QemComplexDouble* r2, const char* name) {
  orv_qem_kernel_zError(code, index, a, a, r1, r2, name);
}
template <class I, class O>
void report(int32_t code, int32_t index, const I* a, O* r, O*, const char* name) {
  report_mixed(code, index, a, r, name);
}

}  // namespace ORV_TAG
}  // namespace orv
