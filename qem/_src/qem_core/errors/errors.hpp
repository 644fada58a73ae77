// SPDX-License-Identifier: MIT
#pragma once

#include <orv/qem.h>

namespace orv {

/// Reports of functions whose arguments and results differ in kind, as orv_qem_kernel_zError and
/// its fellows would make them. The imaginary part of a real number is 0 in the record.
void report_mixed(int32_t code, int32_t index, const float* a, QemComplexFloat* r,
                  const char* name);
void report_mixed(int32_t code, int32_t index, const double* a, QemComplexDouble* r,
                  const char* name);
void report_mixed(int32_t code, int32_t index, const QemComplexFloat* a, float* r,
                  const char* name);
void report_mixed(int32_t code, int32_t index, const QemComplexDouble* a, double* r,
                  const char* name);

}  // namespace orv
