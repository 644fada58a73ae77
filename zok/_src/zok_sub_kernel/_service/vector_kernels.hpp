// SPDX-License-Identifier: MIT
// Vector functions as random numbers and statistics use them: one name for both precisions, by a
// slot of the function's table. To be called under QuietKernels.
#pragma once

#include <orv/qem_functions.h>

namespace orv {
inline namespace ORV_TAG {

/// Slots of a kernel table.
enum class Slot { la, ha, ep };

/// How blocks of random numbers are transformed. No law shows the difference to HA.
template <class T>
inline constexpr Slot block_slot = Slot::ep;
template <>
inline constexpr Slot block_slot<float> = Slot::la;

namespace kernels {

template <class Table>
auto kernel(const Table& table, Slot slot) {
  return table[static_cast<int>(slot)];
}

// r[i] = f(x[i])
#define ORV_UNARY(name, F)                                                                  \
  inline void name(int32_t n, const double* x, double* r, Slot slot = block_slot<double>) { \
    kernel(orv_qem_kernel_d##F##_ttab, slot)(n, x, r);                                      \
  }                                                                                         \
  inline void name(int32_t n, const float* x, float* r, Slot slot = block_slot<float>) {    \
    kernel(orv_qem_kernel_s##F##_ttab, slot)(n, x, r);                                      \
  }                                                                                         \
  inline double name(double x) { /* a parameter, at HA */                                   \
    kernel(orv_qem_kernel_d##F##_ttab, Slot::ha)(1, &x, &x);                                \
    return x;                                                                               \
  }
ORV_UNARY(cdf_norm, CdfNorm)
ORV_UNARY(cos, Cos)
ORV_UNARY(erf_inv, ErfInv)
ORV_UNARY(exp, Exp)
ORV_UNARY(expm1, Expm1)
ORV_UNARY(inv, Inv)
ORV_UNARY(ln, Ln)
ORV_UNARY(ln1p, Log1p)
ORV_UNARY(sin, Sin)
ORV_UNARY(sqrt, Sqrt)
ORV_UNARY(tan, Tan)
#undef ORV_UNARY

/// s[i] = sin(x[i]), c[i] = cos(x[i])
inline void sin_cos(int32_t n, const double* x, double* s, double* c) {
  kernel(orv_qem_kernel_dSinCos_ttab, block_slot<double>)(n, x, s, c);
}
inline void sin_cos(int32_t n, const float* x, float* s, float* c) {
  kernel(orv_qem_kernel_sSinCos_ttab, block_slot<float>)(n, x, s, c);
}

/// r[i] = x[i]^y
inline void powx(int32_t n, const double* x, double y, double* r) {
  kernel(orv_qem_kernel_dPowx_ttab, block_slot<double>)(n, x, y, r);
}
inline void powx(int32_t n, const float* x, float y, float* r) {
  kernel(orv_qem_kernel_sPowx_ttab, block_slot<float>)(n, x, y, r);
}

}  // namespace kernels
}  // namespace ORV_TAG
}  // namespace orv
