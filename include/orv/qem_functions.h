/* Made by tools/make_functions_header.py from the lists in qem/_bt_gen_ia32; do not edit.
 *
 * First the shapes of kernels, each for its types. `n` counts elements; at 0 or below nothing is read
 * or written. Vectors need no alignment. An output may be the same vector as an input; other overlap
 * is allowed where a function says so. With `narrow` 1, as stubs have it, kernels that move data take
 * the low halves of n and incr, and index and mask vectors of 32-bit integers; with any other value
 * all of these have 64 bits.
 *
 * Then for each function: the table of its kernels and of their relative costs, in the order LA, HA, EP;
 * a stub for each level (the plain name is HA); and the kernels themselves, which carry the
 * instruction set they need in their name: G9 AVX, N8 and P8 SSE4.1, T7 and V8 SSE3, W7 SSE2.
 *
 * "largest error" is in units in the last place of the result, over the whole domain. Functions
 * without that line are exact or rounded once. */
/* clang-format off */
#ifndef ORV_QEM_FUNCTIONS_H
#define ORV_QEM_FUNCTIONS_H

#include <orv/qem.h>

#ifdef __cplusplus
extern "C" {
#endif

/** r[i] = f(a[i]) */
typedef void (*QemUnary_s)(int32_t n, const float* a, float* r);
typedef void (*QemUnary_d)(int32_t n, const double* a, double* r);
typedef void (*QemUnary_c)(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
typedef void (*QemUnary_z)(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);

/** r[i] = f(a[i], b[i]) */
typedef void (*QemBinary_s)(int32_t n, const float* a, const float* b, float* r);
typedef void (*QemBinary_d)(int32_t n, const double* a, const double* b, double* r);
typedef void (*QemBinary_c)(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
typedef void (*QemBinary_z)(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);

/** r[i] = f(a[i], b), one second argument for all elements */
typedef void (*QemScalarSecond_s)(int32_t n, const float* a, float b, float* r);
typedef void (*QemScalarSecond_d)(int32_t n, const double* a, double b, double* r);
typedef void (*QemScalarSecond_c)(int32_t n, const QemComplexFloat* a, QemComplexFloat b, QemComplexFloat* r);
typedef void (*QemScalarSecond_z)(int32_t n, const QemComplexDouble* a, QemComplexDouble b, QemComplexDouble* r);

/** r1[i], r2[i] = f(a[i]) */
typedef void (*QemTwoResults_s)(int32_t n, const float* a, float* r1, float* r2);
typedef void (*QemTwoResults_d)(int32_t n, const double* a, double* r1, double* r2);

/** r[i] = f(a[i]), a real number of a complex one */
typedef void (*QemComplexToReal_c)(int32_t n, const QemComplexFloat* a, float* r);
typedef void (*QemComplexToReal_z)(int32_t n, const QemComplexDouble* a, double* r);

/** r[i] = f(a[i]), a complex number of a real one */
typedef void (*QemRealToComplex_c)(int32_t n, const float* a, QemComplexFloat* r);
typedef void (*QemRealToComplex_z)(int32_t n, const double* a, QemComplexDouble* r);

/** r[i] = (scalea a[i] + shifta)/(scaleb b[i] + shiftb) */
typedef void (*QemFractionalLinear_s)(int32_t n, const float* a, const float* b, float scalea, float shifta, float scaleb, float shiftb, float* r);
typedef void (*QemFractionalLinear_d)(int32_t n, const double* a, const double* b, double scalea, double shifta, double scaleb, double shiftb, double* r);

/** y[i] = a[i incr] */
typedef void (*QemStridedPack_s)(int64_t n, const float* a, int64_t incr, float* y, int32_t narrow);
typedef void (*QemStridedPack_d)(int64_t n, const double* a, int64_t incr, double* y, int32_t narrow);

/** y[i incr] = a[i] */
typedef void (*QemStridedUnpack_s)(int64_t n, const float* a, float* y, int64_t incr, int32_t narrow);
typedef void (*QemStridedUnpack_d)(int64_t n, const double* a, double* y, int64_t incr, int32_t narrow);

/** y[i] = a[ia[i]] */
typedef void (*QemIndexedPack_s)(int64_t n, const float* a, const void* ia, float* y, int32_t narrow);
typedef void (*QemIndexedPack_d)(int64_t n, const double* a, const void* ia, double* y, int32_t narrow);

/** y[iy[i]] = a[i] */
typedef void (*QemIndexedUnpack_s)(int64_t n, const float* a, float* y, const void* iy, int32_t narrow);
typedef void (*QemIndexedUnpack_d)(int64_t n, const double* a, double* y, const void* iy, int32_t narrow);

/** y[k++] = a[i] where ma[i] is not 0 */
typedef void (*QemMaskedPack_s)(int64_t n, const float* a, const void* ma, float* y, int32_t narrow);
typedef void (*QemMaskedPack_d)(int64_t n, const double* a, const void* ma, double* y, int32_t narrow);

/** y[i] = a[k++] where my[i] is not 0 */
typedef void (*QemMaskedUnpack_s)(int64_t n, const float* a, float* y, const void* my, int32_t narrow);
typedef void (*QemMaskedUnpack_d)(int64_t n, const double* a, double* y, const void* my, int32_t narrow);

/** sAbs: absolute value; float.
 *  Status codes: none. */
extern ORV_API const QemUnary_s orv_qem_kernel_sAbs_ttab[3];
extern ORV_API const float orv_qem_kernel_sAbs_ctab[3];
ORV_API void _qemsAbs_21(int32_t n, const float* a, float* r);
ORV_API void _qemsAbs_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsAbs(int32_t n, const float* a, float* r);
ORV_API void _qemsAbs_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sAbs_W7HAynn(int32_t n, const float* a, float* r);

/** sAcos: arccosine, with relative accuracy up to its zero at 1; float.
 *  Largest error: LA 1.26, HA 0.505, EP 613 ulp.
 *  Status codes: 1 argument outside -1 to 1. */
extern ORV_API const QemUnary_s orv_qem_kernel_sAcos_ttab[3];
extern ORV_API const float orv_qem_kernel_sAcos_ctab[3];
ORV_API void _qemsAcos_21(int32_t n, const float* a, float* r);
ORV_API void _qemsAcos_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsAcos(int32_t n, const float* a, float* r);
ORV_API void _qemsAcos_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sAcos_G9LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sAcos_G9HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sAcos_G9EPnnn(int32_t n, const float* a, float* r);

/** sAcosh: inverse hyperbolic cosine; float.
 *  Largest error: LA 1.91, HA 0.51, EP 2.47e+03 ulp.
 *  Status codes: 1 argument below 1. */
extern ORV_API const QemUnary_s orv_qem_kernel_sAcosh_ttab[3];
extern ORV_API const float orv_qem_kernel_sAcosh_ctab[3];
ORV_API void _qemsAcosh_21(int32_t n, const float* a, float* r);
ORV_API void _qemsAcosh_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsAcosh(int32_t n, const float* a, float* r);
ORV_API void _qemsAcosh_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sAcosh_W7LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sAcosh_T7HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sAcosh_W7EPnnn(int32_t n, const float* a, float* r);

/** sAdd: sum; under overlap as if element by element, ascending; float.
 *  Status codes: none. */
extern ORV_API const QemBinary_s orv_qem_kernel_sAdd_ttab[3];
extern ORV_API const float orv_qem_kernel_sAdd_ctab[3];
ORV_API void _qemsAdd_21(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsAdd_HA(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsAdd(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsAdd_11(int32_t n, const float* a, const float* b, float* r);
ORV_API void orv_qem_kernel_sAdd_G9HAynn(int32_t n, const float* a, const float* b, float* r);

/** sAsin: arcsine; float.
 *  Largest error: LA 2.41, HA 0.505, EP 664 ulp.
 *  Status codes: 1 argument outside -1 to 1. */
extern ORV_API const QemUnary_s orv_qem_kernel_sAsin_ttab[3];
extern ORV_API const float orv_qem_kernel_sAsin_ctab[3];
ORV_API void _qemsAsin_21(int32_t n, const float* a, float* r);
ORV_API void _qemsAsin_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsAsin(int32_t n, const float* a, float* r);
ORV_API void _qemsAsin_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sAsin_G9LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sAsin_G9HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sAsin_G9EPnnn(int32_t n, const float* a, float* r);

/** sAsinh: inverse hyperbolic sine; float.
 *  Largest error: LA 1.95, HA 0.51, EP 2.47e+03 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_s orv_qem_kernel_sAsinh_ttab[3];
extern ORV_API const float orv_qem_kernel_sAsinh_ctab[3];
ORV_API void _qemsAsinh_21(int32_t n, const float* a, float* r);
ORV_API void _qemsAsinh_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsAsinh(int32_t n, const float* a, float* r);
ORV_API void _qemsAsinh_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sAsinh_W7LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sAsinh_T7HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sAsinh_W7EPnnn(int32_t n, const float* a, float* r);

/** sAtan: arctangent; float.
 *  Largest error: LA 2.14, HA 0.556, EP 297 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_s orv_qem_kernel_sAtan_ttab[3];
extern ORV_API const float orv_qem_kernel_sAtan_ctab[3];
ORV_API void _qemsAtan_21(int32_t n, const float* a, float* r);
ORV_API void _qemsAtan_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsAtan(int32_t n, const float* a, float* r);
ORV_API void _qemsAtan_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sAtan_G9LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sAtan_G9HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sAtan_G9EPnnn(int32_t n, const float* a, float* r);

/** sAtan2: angle of the point (b, a), from -pi to pi, by the signs of zeros as well; float.
 *  Largest error: LA 2.14, HA 0.55, EP 298 ulp.
 *  Status codes: none. */
extern ORV_API const QemBinary_s orv_qem_kernel_sAtan2_ttab[3];
extern ORV_API const float orv_qem_kernel_sAtan2_ctab[3];
ORV_API void _qemsAtan2_21(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsAtan2_HA(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsAtan2(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsAtan2_11(int32_t n, const float* a, const float* b, float* r);
ORV_API void orv_qem_kernel_sAtan2_G9LAynn(int32_t n, const float* a, const float* b, float* r);
ORV_API void orv_qem_kernel_sAtan2_G9HAynn(int32_t n, const float* a, const float* b, float* r);
ORV_API void orv_qem_kernel_sAtan2_G9EPnnn(int32_t n, const float* a, const float* b, float* r);

/** sAtanh: inverse hyperbolic tangent; float.
 *  Largest error: LA 1.52, HA 0.51, EP 2.47e+03 ulp.
 *  Status codes: 1 argument beyond 1 in magnitude, 2 argument 1 or -1. */
extern ORV_API const QemUnary_s orv_qem_kernel_sAtanh_ttab[3];
extern ORV_API const float orv_qem_kernel_sAtanh_ctab[3];
ORV_API void _qemsAtanh_21(int32_t n, const float* a, float* r);
ORV_API void _qemsAtanh_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsAtanh(int32_t n, const float* a, float* r);
ORV_API void _qemsAtanh_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sAtanh_W7LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sAtanh_W7HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sAtanh_W7EPnnn(int32_t n, const float* a, float* r);

/** sCbrt: cube root, with the sign of x; float.
 *  Largest error: LA 1.01, HA 0.517, EP 355 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_s orv_qem_kernel_sCbrt_ttab[3];
extern ORV_API const float orv_qem_kernel_sCbrt_ctab[3];
ORV_API void _qemsCbrt_21(int32_t n, const float* a, float* r);
ORV_API void _qemsCbrt_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsCbrt(int32_t n, const float* a, float* r);
ORV_API void _qemsCbrt_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sCbrt_W7LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sCbrt_W7HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sCbrt_W7EPnnn(int32_t n, const float* a, float* r);

/** sCdfNorm: distribution function of the normal law, erfc(-x/sqrt(2))/2; float.
 *  Largest error: LA 2.83, HA 0.51, EP 2.5e+03 ulp.
 *  Status codes: 4 zero result of a finite argument. */
extern ORV_API const QemUnary_s orv_qem_kernel_sCdfNorm_ttab[3];
extern ORV_API const float orv_qem_kernel_sCdfNorm_ctab[3];
ORV_API void _qemsCdfNorm_21(int32_t n, const float* a, float* r);
ORV_API void _qemsCdfNorm_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsCdfNorm(int32_t n, const float* a, float* r);
ORV_API void _qemsCdfNorm_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sCdfNorm_G9LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sCdfNorm_G9HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sCdfNorm_G9EPnnn(int32_t n, const float* a, float* r);

/** sCdfNormInv: quantile of the standard normal distribution, where CdfNorm is x; float.
 *  Largest error: LA 2.4, HA 0.547, EP 2.4 ulp.
 *  Status codes: 1 argument below 0 or above 1, 2 argument 0 or 1. */
extern ORV_API const QemUnary_s orv_qem_kernel_sCdfNormInv_ttab[3];
extern ORV_API const float orv_qem_kernel_sCdfNormInv_ctab[3];
ORV_API void _qemsCdfNormInv_21(int32_t n, const float* a, float* r);
ORV_API void _qemsCdfNormInv_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsCdfNormInv(int32_t n, const float* a, float* r);
ORV_API void _qemsCdfNormInv_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sCdfNormInv_W7LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sCdfNormInv_W7HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sCdfNormInv_W7EPnnn(int32_t n, const float* a, float* r);

/** sCeil: least whole number that is not below x; float.
 *  Status codes: none. */
extern ORV_API const QemUnary_s orv_qem_kernel_sCeil_ttab[3];
extern ORV_API const float orv_qem_kernel_sCeil_ctab[3];
ORV_API void _qemsCeil_21(int32_t n, const float* a, float* r);
ORV_API void _qemsCeil_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsCeil(int32_t n, const float* a, float* r);
ORV_API void _qemsCeil_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sCeil_G9HAynn(int32_t n, const float* a, float* r);

/** sCos: cosine, of any finite argument; float.
 *  Largest error: LA 1.7, HA 0.555, EP 975 ulp.
 *  Status codes: 1 infinite argument. */
extern ORV_API const QemUnary_s orv_qem_kernel_sCos_ttab[3];
extern ORV_API const float orv_qem_kernel_sCos_ctab[3];
ORV_API void _qemsCos_21(int32_t n, const float* a, float* r);
ORV_API void _qemsCos_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsCos(int32_t n, const float* a, float* r);
ORV_API void _qemsCos_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sCos_G9LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sCos_G9HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sCos_G9EPnnn(int32_t n, const float* a, float* r);

/** sCosh: hyperbolic cosine; float.
 *  Largest error: LA 1.48, HA 0.501, EP 103 ulp.
 *  Status codes: 3 overflow. */
extern ORV_API const QemUnary_s orv_qem_kernel_sCosh_ttab[3];
extern ORV_API const float orv_qem_kernel_sCosh_ctab[3];
ORV_API void _qemsCosh_21(int32_t n, const float* a, float* r);
ORV_API void _qemsCosh_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsCosh(int32_t n, const float* a, float* r);
ORV_API void _qemsCosh_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sCosh_G9LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sCosh_G9HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sCosh_G9EPnnn(int32_t n, const float* a, float* r);

/** sDiv: quotient; float.
 *  Status codes: 2 zero divisor. */
extern ORV_API const QemBinary_s orv_qem_kernel_sDiv_ttab[3];
extern ORV_API const float orv_qem_kernel_sDiv_ctab[3];
ORV_API void _qemsDiv_21(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsDiv_HA(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsDiv(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsDiv_11(int32_t n, const float* a, const float* b, float* r);
ORV_API void orv_qem_kernel_sDiv_G9LAynn(int32_t n, const float* a, const float* b, float* r);
ORV_API void orv_qem_kernel_sDiv_G9HAynn(int32_t n, const float* a, const float* b, float* r);
ORV_API void orv_qem_kernel_sDiv_G9EPnnn(int32_t n, const float* a, const float* b, float* r);

/** sErf: error function, odd to the bit; float.
 *  Largest error: LA 2.46, HA 0.51, EP 600 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_s orv_qem_kernel_sErf_ttab[3];
extern ORV_API const float orv_qem_kernel_sErf_ctab[3];
ORV_API void _qemsErf_21(int32_t n, const float* a, float* r);
ORV_API void _qemsErf_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsErf(int32_t n, const float* a, float* r);
ORV_API void _qemsErf_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sErf_G9LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sErf_G9HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sErf_G9EPnnn(int32_t n, const float* a, float* r);

/** sErfInv: inverse of the error function; float.
 *  Largest error: LA 2.25, HA 0.549, EP 2.25 ulp.
 *  Status codes: 1 argument below -1 or above 1, 2 argument -1 or 1. */
extern ORV_API const QemUnary_s orv_qem_kernel_sErfInv_ttab[3];
extern ORV_API const float orv_qem_kernel_sErfInv_ctab[3];
ORV_API void _qemsErfInv_21(int32_t n, const float* a, float* r);
ORV_API void _qemsErfInv_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsErfInv(int32_t n, const float* a, float* r);
ORV_API void _qemsErfInv_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sErfInv_G9LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sErfInv_G9HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sErfInv_G9EPnnn(int32_t n, const float* a, float* r);

/** sErfc: 1 - erf(x), accurate where it is small; float.
 *  Largest error: LA 2.95, HA 0.51, EP 4.1e+03 ulp.
 *  Status codes: 4 denormal or zero result of a finite argument. */
extern ORV_API const QemUnary_s orv_qem_kernel_sErfc_ttab[3];
extern ORV_API const float orv_qem_kernel_sErfc_ctab[3];
ORV_API void _qemsErfc_21(int32_t n, const float* a, float* r);
ORV_API void _qemsErfc_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsErfc(int32_t n, const float* a, float* r);
ORV_API void _qemsErfc_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sErfc_W7LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sErfc_W7HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sErfc_W7EPnnn(int32_t n, const float* a, float* r);

/** sErfcInv: inverse of the complementary error function; float.
 *  Largest error: LA 2.64, HA 0.549, EP 2.64 ulp.
 *  Status codes: 1 argument below 0 or above 2, 2 argument 0 or 2. */
extern ORV_API const QemUnary_s orv_qem_kernel_sErfcInv_ttab[3];
extern ORV_API const float orv_qem_kernel_sErfcInv_ctab[3];
ORV_API void _qemsErfcInv_21(int32_t n, const float* a, float* r);
ORV_API void _qemsErfcInv_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsErfcInv(int32_t n, const float* a, float* r);
ORV_API void _qemsErfcInv_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sErfcInv_W7LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sErfcInv_W7HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sErfcInv_W7EPnnn(int32_t n, const float* a, float* r);

/** sExp: e^x; float.
 *  Largest error: LA 1.97, HA 0.569, EP 123 ulp.
 *  Status codes: 3 overflow, 4 denormal or zero result. */
extern ORV_API const QemUnary_s orv_qem_kernel_sExp_ttab[3];
extern ORV_API const float orv_qem_kernel_sExp_ctab[3];
ORV_API void _qemsExp_21(int32_t n, const float* a, float* r);
ORV_API void _qemsExp_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsExp(int32_t n, const float* a, float* r);
ORV_API void _qemsExp_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sExp_G9LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sExp_G9HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sExp_G9EPnnn(int32_t n, const float* a, float* r);

/** sExpm1: e^x - 1, accurate near 0; float.
 *  Largest error: LA 0.559, HA 0.559, EP 0.559 ulp.
 *  Status codes: 3 overflow, 4 denormal result. */
extern ORV_API const QemUnary_s orv_qem_kernel_sExpm1_ttab[3];
extern ORV_API const float orv_qem_kernel_sExpm1_ctab[3];
ORV_API void _qemsExpm1_21(int32_t n, const float* a, float* r);
ORV_API void _qemsExpm1_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsExpm1(int32_t n, const float* a, float* r);
ORV_API void _qemsExpm1_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sExpm1_V8HAynn(int32_t n, const float* a, float* r);

/** sFloor: greatest whole number that is not above x; float.
 *  Status codes: none. */
extern ORV_API const QemUnary_s orv_qem_kernel_sFloor_ttab[3];
extern ORV_API const float orv_qem_kernel_sFloor_ctab[3];
ORV_API void _qemsFloor_21(int32_t n, const float* a, float* r);
ORV_API void _qemsFloor_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsFloor(int32_t n, const float* a, float* r);
ORV_API void _qemsFloor_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sFloor_G9HAynn(int32_t n, const float* a, float* r);

/** sHypot: sqrt(a^2 + b^2), infinite beside an infinity even of NaN; float.
 *  Largest error: LA 1.16, HA 0.501, EP 1.16 ulp.
 *  Status codes: none. */
extern ORV_API const QemBinary_s orv_qem_kernel_sHypot_ttab[3];
extern ORV_API const float orv_qem_kernel_sHypot_ctab[3];
ORV_API void _qemsHypot_21(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsHypot_HA(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsHypot(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsHypot_11(int32_t n, const float* a, const float* b, float* r);
ORV_API void orv_qem_kernel_sHypot_G9LAynn(int32_t n, const float* a, const float* b, float* r);
ORV_API void orv_qem_kernel_sHypot_G9HAynn(int32_t n, const float* a, const float* b, float* r);
ORV_API void orv_qem_kernel_sHypot_G9EPnnn(int32_t n, const float* a, const float* b, float* r);

/** sInv: reciprocal; float.
 *  Status codes: 2 zero argument. */
extern ORV_API const QemUnary_s orv_qem_kernel_sInv_ttab[3];
extern ORV_API const float orv_qem_kernel_sInv_ctab[3];
ORV_API void _qemsInv_21(int32_t n, const float* a, float* r);
ORV_API void _qemsInv_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsInv(int32_t n, const float* a, float* r);
ORV_API void _qemsInv_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sInv_G9LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sInv_G9HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sInv_G9EPnnn(int32_t n, const float* a, float* r);

/** sInvCbrt: reciprocal of the cube root; float.
 *  Largest error: LA 1.01, HA 0.533, EP 883 ulp.
 *  Status codes: 2 zero argument. */
extern ORV_API const QemUnary_s orv_qem_kernel_sInvCbrt_ttab[3];
extern ORV_API const float orv_qem_kernel_sInvCbrt_ctab[3];
ORV_API void _qemsInvCbrt_21(int32_t n, const float* a, float* r);
ORV_API void _qemsInvCbrt_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsInvCbrt(int32_t n, const float* a, float* r);
ORV_API void _qemsInvCbrt_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sInvCbrt_W7LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sInvCbrt_W7HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sInvCbrt_W7EPnnn(int32_t n, const float* a, float* r);

/** sInvSqrt: 1/sqrt(x); float.
 *  Largest error: LA 1.5, HA 0.503, EP 1.58e+03 ulp.
 *  Status codes: 1 negative argument, 2 zero. */
extern ORV_API const QemUnary_s orv_qem_kernel_sInvSqrt_ttab[3];
extern ORV_API const float orv_qem_kernel_sInvSqrt_ctab[3];
ORV_API void _qemsInvSqrt_21(int32_t n, const float* a, float* r);
ORV_API void _qemsInvSqrt_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsInvSqrt(int32_t n, const float* a, float* r);
ORV_API void _qemsInvSqrt_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sInvSqrt_W7LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sInvSqrt_W7HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sInvSqrt_W7EPnnn(int32_t n, const float* a, float* r);

/** sLinearFrac: (scalea a + shifta)/(scaleb b + shiftb); with scaleb 0 by way of 1/shiftb, within 1.5 ulp; float.
 *  Status codes: none. */
extern ORV_API const QemFractionalLinear_s orv_qem_kernel_sLinearFrac_ttab[3];
extern ORV_API const float orv_qem_kernel_sLinearFrac_ctab[3];
ORV_API void _qemsLinearFrac_21(int32_t n, const float* a, const float* b, float scalea, float shifta, float scaleb, float shiftb, float* r);
ORV_API void _qemsLinearFrac_HA(int32_t n, const float* a, const float* b, float scalea, float shifta, float scaleb, float shiftb, float* r);
ORV_API void _qemsLinearFrac(int32_t n, const float* a, const float* b, float scalea, float shifta, float scaleb, float shiftb, float* r);
ORV_API void _qemsLinearFrac_11(int32_t n, const float* a, const float* b, float scalea, float shifta, float scaleb, float shiftb, float* r);
ORV_API void orv_qem_kernel_sLinearFrac_N8HAynn(int32_t n, const float* a, const float* b, float scalea, float shifta, float scaleb, float shiftb, float* r);

/** sLn: natural logarithm; float.
 *  Largest error: LA 1.23, HA 0.718, EP 842 ulp.
 *  Status codes: 1 negative argument, 2 zero. */
extern ORV_API const QemUnary_s orv_qem_kernel_sLn_ttab[3];
extern ORV_API const float orv_qem_kernel_sLn_ctab[3];
ORV_API void _qemsLn_21(int32_t n, const float* a, float* r);
ORV_API void _qemsLn_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsLn(int32_t n, const float* a, float* r);
ORV_API void _qemsLn_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sLn_G9LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sLn_G9HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sLn_G9EPnnn(int32_t n, const float* a, float* r);

/** sLog10: decimal logarithm; float.
 *  Largest error: LA 2.28, HA 0.51, EP 462 ulp.
 *  Status codes: 1 negative argument, 2 zero. */
extern ORV_API const QemUnary_s orv_qem_kernel_sLog10_ttab[3];
extern ORV_API const float orv_qem_kernel_sLog10_ctab[3];
ORV_API void _qemsLog10_21(int32_t n, const float* a, float* r);
ORV_API void _qemsLog10_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsLog10(int32_t n, const float* a, float* r);
ORV_API void _qemsLog10_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sLog10_G9LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sLog10_G9HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sLog10_G9EPnnn(int32_t n, const float* a, float* r);

/** sLog1p: ln(1 + x), accurate near 0; float.
 *  Largest error: LA 1.64, HA 0.576, EP 340 ulp.
 *  Status codes: 1 argument below -1, 2 argument -1. */
extern ORV_API const QemUnary_s orv_qem_kernel_sLog1p_ttab[3];
extern ORV_API const float orv_qem_kernel_sLog1p_ctab[3];
ORV_API void _qemsLog1p_21(int32_t n, const float* a, float* r);
ORV_API void _qemsLog1p_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsLog1p(int32_t n, const float* a, float* r);
ORV_API void _qemsLog1p_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sLog1p_G9LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sLog1p_G9HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sLog1p_G9EPnnn(int32_t n, const float* a, float* r);

/** sModf: integral part towards zero and fractional part, both with x's sign; float.
 *  Status codes: none. */
extern ORV_API const QemTwoResults_s orv_qem_kernel_sModf_ttab[3];
extern ORV_API const float orv_qem_kernel_sModf_ctab[3];
ORV_API void _qemsModf_21(int32_t n, const float* a, float* r1, float* r2);
ORV_API void _qemsModf_HA(int32_t n, const float* a, float* r1, float* r2);
ORV_API void _qemsModf(int32_t n, const float* a, float* r1, float* r2);
ORV_API void _qemsModf_11(int32_t n, const float* a, float* r1, float* r2);
ORV_API void orv_qem_kernel_sModf_W7HAynn(int32_t n, const float* a, float* r1, float* r2);

/** sMul: product; under overlap as if element by element, ascending; float.
 *  Status codes: none. */
extern ORV_API const QemBinary_s orv_qem_kernel_sMul_ttab[3];
extern ORV_API const float orv_qem_kernel_sMul_ctab[3];
ORV_API void _qemsMul_21(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsMul_HA(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsMul(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsMul_11(int32_t n, const float* a, const float* b, float* r);
ORV_API void orv_qem_kernel_sMul_G9HAynn(int32_t n, const float* a, const float* b, float* r);

/** sNearbyInt: whole number by the caller's rounding mode, inexact flag as before; float.
 *  Status codes: none. */
extern ORV_API const QemUnary_s orv_qem_kernel_sNearbyInt_ttab[3];
extern ORV_API const float orv_qem_kernel_sNearbyInt_ctab[3];
ORV_API void _qemsNearbyInt_21(int32_t n, const float* a, float* r);
ORV_API void _qemsNearbyInt_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsNearbyInt(int32_t n, const float* a, float* r);
ORV_API void _qemsNearbyInt_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sNearbyInt_P8HAynn(int32_t n, const float* a, float* r);

/** sPackI: elements at a distance, which may be 0 or negative, to a dense vector; float.
 *  Status codes: none. */
extern ORV_API const QemStridedPack_s orv_qem_kernel_sPackI_ttab[3];
extern ORV_API const float orv_qem_kernel_sPackI_ctab[3];
ORV_API void _qemsPackI_21(int64_t n, const float* a, int64_t incr, float* y);
ORV_API void _qemsPackI_HA(int64_t n, const float* a, int64_t incr, float* y);
ORV_API void _qemsPackI(int64_t n, const float* a, int64_t incr, float* y);
ORV_API void _qemsPackI_11(int64_t n, const float* a, int64_t incr, float* y);
ORV_API void orv_qem_kernel_sPackI_PXHAynn(int64_t n, const float* a, int64_t incr, float* y, int32_t narrow);

/** sPackM: elements whose mask is not 0, to a dense vector; float.
 *  Status codes: none. */
extern ORV_API const QemMaskedPack_s orv_qem_kernel_sPackM_ttab[3];
extern ORV_API const float orv_qem_kernel_sPackM_ctab[3];
ORV_API void _qemsPackM_21(int64_t n, const float* a, const int32_t* ma, float* y);
ORV_API void _qemsPackM_HA(int64_t n, const float* a, const int32_t* ma, float* y);
ORV_API void _qemsPackM(int64_t n, const float* a, const int32_t* ma, float* y);
ORV_API void _qemsPackM_11(int64_t n, const float* a, const int32_t* ma, float* y);
ORV_API void orv_qem_kernel_sPackM_PXHAynn(int64_t n, const float* a, const void* ma, float* y, int32_t narrow);

/** sPackV: elements at places told by indices, to a dense vector; float.
 *  Status codes: none. */
extern ORV_API const QemIndexedPack_s orv_qem_kernel_sPackV_ttab[3];
extern ORV_API const float orv_qem_kernel_sPackV_ctab[3];
ORV_API void _qemsPackV_21(int64_t n, const float* a, const int32_t* ia, float* y);
ORV_API void _qemsPackV_HA(int64_t n, const float* a, const int32_t* ia, float* y);
ORV_API void _qemsPackV(int64_t n, const float* a, const int32_t* ia, float* y);
ORV_API void _qemsPackV_11(int64_t n, const float* a, const int32_t* ia, float* y);
ORV_API void orv_qem_kernel_sPackV_PXHAynn(int64_t n, const float* a, const void* ia, float* y, int32_t narrow);

/** sPow: a^b; float.
 *  Largest error: LA 1.4, HA 0.501, EP 3.37e+03 ulp.
 *  Status codes: 1 zero to a negative power, finite negative to a fraction; over- and underflow are silent. */
extern ORV_API const QemBinary_s orv_qem_kernel_sPow_ttab[3];
extern ORV_API const float orv_qem_kernel_sPow_ctab[3];
ORV_API void _qemsPow_21(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsPow_HA(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsPow(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsPow_11(int32_t n, const float* a, const float* b, float* r);
ORV_API void orv_qem_kernel_sPow_G9LAynn(int32_t n, const float* a, const float* b, float* r);
ORV_API void orv_qem_kernel_sPow_G9HAynn(int32_t n, const float* a, const float* b, float* r);
ORV_API void orv_qem_kernel_sPow_G9EPnnn(int32_t n, const float* a, const float* b, float* r);

/** sPow2o3: x^(2/3), the square of the cube root, of numbers of either sign; float.
 *  Largest error: LA 2.2, HA 0.54, EP 715 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_s orv_qem_kernel_sPow2o3_ttab[3];
extern ORV_API const float orv_qem_kernel_sPow2o3_ctab[3];
ORV_API void _qemsPow2o3_21(int32_t n, const float* a, float* r);
ORV_API void _qemsPow2o3_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsPow2o3(int32_t n, const float* a, float* r);
ORV_API void _qemsPow2o3_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sPow2o3_W7LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sPow2o3_W7HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sPow2o3_W7EPnnn(int32_t n, const float* a, float* r);

/** sPow3o2: x^(3/2); float.
 *  Largest error: LA 1.29, HA 0.502, EP 1.29 ulp.
 *  Status codes: 1 negative argument. */
extern ORV_API const QemUnary_s orv_qem_kernel_sPow3o2_ttab[3];
extern ORV_API const float orv_qem_kernel_sPow3o2_ctab[3];
ORV_API void _qemsPow3o2_21(int32_t n, const float* a, float* r);
ORV_API void _qemsPow3o2_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsPow3o2(int32_t n, const float* a, float* r);
ORV_API void _qemsPow3o2_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sPow3o2_W7LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sPow3o2_W7HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sPow3o2_W7EPnnn(int32_t n, const float* a, float* r);

/** sPowx: a^b, by functions of their own for b of -1, 1, 2, the halves and thirds; float.
 *  Largest error: LA 2.04, HA 0.531, EP 3.37e+03 ulp.
 *  Status codes: 1 as Pow; those of Inv, Sqrt and their kin at such b. */
extern ORV_API const QemScalarSecond_s orv_qem_kernel_sPowx_ttab[3];
extern ORV_API const float orv_qem_kernel_sPowx_ctab[3];
ORV_API void _qemsPowx_21(int32_t n, const float* a, float b, float* r);
ORV_API void _qemsPowx_HA(int32_t n, const float* a, float b, float* r);
ORV_API void _qemsPowx(int32_t n, const float* a, float b, float* r);
ORV_API void _qemsPowx_11(int32_t n, const float* a, float b, float* r);
ORV_API void orv_qem_kernel_sPowx_G9LAynn(int32_t n, const float* a, float b, float* r);
ORV_API void orv_qem_kernel_sPowx_G9HAynn(int32_t n, const float* a, float b, float* r);
ORV_API void orv_qem_kernel_sPowx_G9EPnnn(int32_t n, const float* a, float b, float* r);

/** sRint: whole number by the caller's rounding mode, with the inexact flag; float.
 *  Status codes: none. */
extern ORV_API const QemUnary_s orv_qem_kernel_sRint_ttab[3];
extern ORV_API const float orv_qem_kernel_sRint_ctab[3];
ORV_API void _qemsRint_21(int32_t n, const float* a, float* r);
ORV_API void _qemsRint_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsRint(int32_t n, const float* a, float* r);
ORV_API void _qemsRint_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sRint_P8HAynn(int32_t n, const float* a, float* r);

/** sRound: nearest whole number, ties away from zero; float.
 *  Status codes: none. */
extern ORV_API const QemUnary_s orv_qem_kernel_sRound_ttab[3];
extern ORV_API const float orv_qem_kernel_sRound_ctab[3];
ORV_API void _qemsRound_21(int32_t n, const float* a, float* r);
ORV_API void _qemsRound_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsRound(int32_t n, const float* a, float* r);
ORV_API void _qemsRound_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sRound_G9HAynn(int32_t n, const float* a, float* r);

/** sSin: sine, of any finite argument; float.
 *  Largest error: LA 1.7, HA 0.555, EP 478 ulp.
 *  Status codes: 1 infinite argument. */
extern ORV_API const QemUnary_s orv_qem_kernel_sSin_ttab[3];
extern ORV_API const float orv_qem_kernel_sSin_ctab[3];
ORV_API void _qemsSin_21(int32_t n, const float* a, float* r);
ORV_API void _qemsSin_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsSin(int32_t n, const float* a, float* r);
ORV_API void _qemsSin_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sSin_G9LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sSin_G9HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sSin_G9EPnnn(int32_t n, const float* a, float* r);

/** sSinCos: sine and cosine, to the bit those of Sin and Cos; float.
 *  Largest error: LA 1.7, HA 0.555, EP 975 ulp.
 *  Status codes: 1 infinite argument. */
extern ORV_API const QemTwoResults_s orv_qem_kernel_sSinCos_ttab[3];
extern ORV_API const float orv_qem_kernel_sSinCos_ctab[3];
ORV_API void _qemsSinCos_21(int32_t n, const float* a, float* r1, float* r2);
ORV_API void _qemsSinCos_HA(int32_t n, const float* a, float* r1, float* r2);
ORV_API void _qemsSinCos(int32_t n, const float* a, float* r1, float* r2);
ORV_API void _qemsSinCos_11(int32_t n, const float* a, float* r1, float* r2);
ORV_API void orv_qem_kernel_sSinCos_G9LAynn(int32_t n, const float* a, float* r1, float* r2);
ORV_API void orv_qem_kernel_sSinCos_G9HAynn(int32_t n, const float* a, float* r1, float* r2);
ORV_API void orv_qem_kernel_sSinCos_G9EPnnn(int32_t n, const float* a, float* r1, float* r2);

/** sSinh: hyperbolic sine, accurate near 0; float.
 *  Largest error: LA 2.36, HA 0.501, EP 305 ulp.
 *  Status codes: 3 overflow. */
extern ORV_API const QemUnary_s orv_qem_kernel_sSinh_ttab[3];
extern ORV_API const float orv_qem_kernel_sSinh_ctab[3];
ORV_API void _qemsSinh_21(int32_t n, const float* a, float* r);
ORV_API void _qemsSinh_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsSinh(int32_t n, const float* a, float* r);
ORV_API void _qemsSinh_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sSinh_G9LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sSinh_G9HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sSinh_G9EPnnn(int32_t n, const float* a, float* r);

/** sSqr: square; under overlap as if element by element, ascending; float.
 *  Status codes: none. */
extern ORV_API const QemUnary_s orv_qem_kernel_sSqr_ttab[3];
extern ORV_API const float orv_qem_kernel_sSqr_ctab[3];
ORV_API void _qemsSqr_21(int32_t n, const float* a, float* r);
ORV_API void _qemsSqr_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsSqr(int32_t n, const float* a, float* r);
ORV_API void _qemsSqr_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sSqr_G9HAynn(int32_t n, const float* a, float* r);

/** sSqrt: square root; float.
 *  Status codes: 1 negative argument. */
extern ORV_API const QemUnary_s orv_qem_kernel_sSqrt_ttab[3];
extern ORV_API const float orv_qem_kernel_sSqrt_ctab[3];
ORV_API void _qemsSqrt_21(int32_t n, const float* a, float* r);
ORV_API void _qemsSqrt_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsSqrt(int32_t n, const float* a, float* r);
ORV_API void _qemsSqrt_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sSqrt_G9LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sSqrt_G9HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sSqrt_G9EPnnn(int32_t n, const float* a, float* r);

/** sSub: difference; under overlap as if element by element, ascending; float.
 *  Status codes: none. */
extern ORV_API const QemBinary_s orv_qem_kernel_sSub_ttab[3];
extern ORV_API const float orv_qem_kernel_sSub_ctab[3];
ORV_API void _qemsSub_21(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsSub_HA(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsSub(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsSub_11(int32_t n, const float* a, const float* b, float* r);
ORV_API void orv_qem_kernel_sSub_G9HAynn(int32_t n, const float* a, const float* b, float* r);

/** sTan: tangent, of any finite argument; float.
 *  Largest error: LA 2.08, HA 0.555, EP 924 ulp.
 *  Status codes: 1 infinite argument. */
extern ORV_API const QemUnary_s orv_qem_kernel_sTan_ttab[3];
extern ORV_API const float orv_qem_kernel_sTan_ctab[3];
ORV_API void _qemsTan_21(int32_t n, const float* a, float* r);
ORV_API void _qemsTan_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsTan(int32_t n, const float* a, float* r);
ORV_API void _qemsTan_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sTan_G9LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sTan_G9HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sTan_G9EPnnn(int32_t n, const float* a, float* r);

/** sTanh: hyperbolic tangent, accurate near 0; float.
 *  Largest error: LA 2.61, HA 0.54, EP 281 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_s orv_qem_kernel_sTanh_ttab[3];
extern ORV_API const float orv_qem_kernel_sTanh_ctab[3];
ORV_API void _qemsTanh_21(int32_t n, const float* a, float* r);
ORV_API void _qemsTanh_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsTanh(int32_t n, const float* a, float* r);
ORV_API void _qemsTanh_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sTanh_G9LAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sTanh_G9HAynn(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sTanh_G9EPnnn(int32_t n, const float* a, float* r);

/** sTrunc: integral part, towards zero; float.
 *  Status codes: none. */
extern ORV_API const QemUnary_s orv_qem_kernel_sTrunc_ttab[3];
extern ORV_API const float orv_qem_kernel_sTrunc_ctab[3];
ORV_API void _qemsTrunc_21(int32_t n, const float* a, float* r);
ORV_API void _qemsTrunc_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsTrunc(int32_t n, const float* a, float* r);
ORV_API void _qemsTrunc_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sTrunc_G9HAynn(int32_t n, const float* a, float* r);

/** sUnpackI: a dense vector to elements at a distance, which may be 0 or negative; float.
 *  Status codes: none. */
extern ORV_API const QemStridedUnpack_s orv_qem_kernel_sUnpackI_ttab[3];
extern ORV_API const float orv_qem_kernel_sUnpackI_ctab[3];
ORV_API void _qemsUnpackI_21(int64_t n, const float* a, float* y, int64_t incr);
ORV_API void _qemsUnpackI_HA(int64_t n, const float* a, float* y, int64_t incr);
ORV_API void _qemsUnpackI(int64_t n, const float* a, float* y, int64_t incr);
ORV_API void _qemsUnpackI_11(int64_t n, const float* a, float* y, int64_t incr);
ORV_API void orv_qem_kernel_sUnpackI_PXHAynn(int64_t n, const float* a, float* y, int64_t incr, int32_t narrow);

/** sUnpackM: a dense vector to the elements whose mask is not 0; float.
 *  Status codes: none. */
extern ORV_API const QemMaskedUnpack_s orv_qem_kernel_sUnpackM_ttab[3];
extern ORV_API const float orv_qem_kernel_sUnpackM_ctab[3];
ORV_API void _qemsUnpackM_21(int64_t n, const float* a, float* y, const int32_t* my);
ORV_API void _qemsUnpackM_HA(int64_t n, const float* a, float* y, const int32_t* my);
ORV_API void _qemsUnpackM(int64_t n, const float* a, float* y, const int32_t* my);
ORV_API void _qemsUnpackM_11(int64_t n, const float* a, float* y, const int32_t* my);
ORV_API void orv_qem_kernel_sUnpackM_PXHAynn(int64_t n, const float* a, float* y, const void* my, int32_t narrow);

/** sUnpackV: a dense vector to elements at places told by indices; float.
 *  Status codes: none. */
extern ORV_API const QemIndexedUnpack_s orv_qem_kernel_sUnpackV_ttab[3];
extern ORV_API const float orv_qem_kernel_sUnpackV_ctab[3];
ORV_API void _qemsUnpackV_21(int64_t n, const float* a, float* y, const int32_t* iy);
ORV_API void _qemsUnpackV_HA(int64_t n, const float* a, float* y, const int32_t* iy);
ORV_API void _qemsUnpackV(int64_t n, const float* a, float* y, const int32_t* iy);
ORV_API void _qemsUnpackV_11(int64_t n, const float* a, float* y, const int32_t* iy);
ORV_API void orv_qem_kernel_sUnpackV_PXHAynn(int64_t n, const float* a, float* y, const void* iy, int32_t narrow);

/** dAbs: absolute value; double.
 *  Status codes: none. */
extern ORV_API const QemUnary_d orv_qem_kernel_dAbs_ttab[3];
extern ORV_API const float orv_qem_kernel_dAbs_ctab[3];
ORV_API void _qemdAbs_50(int32_t n, const double* a, double* r);
ORV_API void _qemdAbs_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdAbs(int32_t n, const double* a, double* r);
ORV_API void _qemdAbs_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dAbs_N8HAynn(int32_t n, const double* a, double* r);

/** dAcos: arccosine, with relative accuracy up to its zero at 1; double.
 *  Largest error: LA 1.22, HA 0.572, EP 4.37e+07 ulp.
 *  Status codes: 1 argument outside -1 to 1. */
extern ORV_API const QemUnary_d orv_qem_kernel_dAcos_ttab[3];
extern ORV_API const float orv_qem_kernel_dAcos_ctab[3];
ORV_API void _qemdAcos_50(int32_t n, const double* a, double* r);
ORV_API void _qemdAcos_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdAcos(int32_t n, const double* a, double* r);
ORV_API void _qemdAcos_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dAcos_G9LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dAcos_G9HAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dAcos_G9EPnnn(int32_t n, const double* a, double* r);

/** dAcosh: inverse hyperbolic cosine; double.
 *  Largest error: LA 2.15, HA 0.502, EP 2.15 ulp.
 *  Status codes: 1 argument below 1. */
extern ORV_API const QemUnary_d orv_qem_kernel_dAcosh_ttab[3];
extern ORV_API const float orv_qem_kernel_dAcosh_ctab[3];
ORV_API void _qemdAcosh_50(int32_t n, const double* a, double* r);
ORV_API void _qemdAcosh_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdAcosh(int32_t n, const double* a, double* r);
ORV_API void _qemdAcosh_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dAcosh_W7LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dAcosh_W7HAynn(int32_t n, const double* a, double* r);

/** dAdd: sum; under overlap as if element by element, ascending; double.
 *  Status codes: none. */
extern ORV_API const QemBinary_d orv_qem_kernel_dAdd_ttab[3];
extern ORV_API const float orv_qem_kernel_dAdd_ctab[3];
ORV_API void _qemdAdd_50(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdAdd_HA(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdAdd(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdAdd_26(int32_t n, const double* a, const double* b, double* r);
ORV_API void orv_qem_kernel_dAdd_G9HAynn(int32_t n, const double* a, const double* b, double* r);

/** dAsin: arcsine; double.
 *  Largest error: LA 2.32, HA 0.59, EP 4.58e+07 ulp.
 *  Status codes: 1 argument outside -1 to 1. */
extern ORV_API const QemUnary_d orv_qem_kernel_dAsin_ttab[3];
extern ORV_API const float orv_qem_kernel_dAsin_ctab[3];
ORV_API void _qemdAsin_50(int32_t n, const double* a, double* r);
ORV_API void _qemdAsin_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdAsin(int32_t n, const double* a, double* r);
ORV_API void _qemdAsin_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dAsin_G9LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dAsin_G9HAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dAsin_G9EPnnn(int32_t n, const double* a, double* r);

/** dAsinh: inverse hyperbolic sine; double.
 *  Largest error: LA 2.1, HA 0.502, EP 2.1 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_d orv_qem_kernel_dAsinh_ttab[3];
extern ORV_API const float orv_qem_kernel_dAsinh_ctab[3];
ORV_API void _qemdAsinh_50(int32_t n, const double* a, double* r);
ORV_API void _qemdAsinh_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdAsinh(int32_t n, const double* a, double* r);
ORV_API void _qemdAsinh_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dAsinh_W7LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dAsinh_W7HAynn(int32_t n, const double* a, double* r);

/** dAtan: arctangent; double.
 *  Largest error: LA 1.46, HA 0.543, EP 1.76e+08 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_d orv_qem_kernel_dAtan_ttab[3];
extern ORV_API const float orv_qem_kernel_dAtan_ctab[3];
ORV_API void _qemdAtan_50(int32_t n, const double* a, double* r);
ORV_API void _qemdAtan_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdAtan(int32_t n, const double* a, double* r);
ORV_API void _qemdAtan_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dAtan_G9LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dAtan_G9HAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dAtan_G9EPnnn(int32_t n, const double* a, double* r);

/** dAtan2: angle of the point (b, a), from -pi to pi, by the signs of zeros as well; double.
 *  Largest error: LA 2.27, HA 0.541, EP 1.76e+08 ulp.
 *  Status codes: none. */
extern ORV_API const QemBinary_d orv_qem_kernel_dAtan2_ttab[3];
extern ORV_API const float orv_qem_kernel_dAtan2_ctab[3];
ORV_API void _qemdAtan2_50(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdAtan2_HA(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdAtan2(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdAtan2_26(int32_t n, const double* a, const double* b, double* r);
ORV_API void orv_qem_kernel_dAtan2_G9LAynn(int32_t n, const double* a, const double* b, double* r);
ORV_API void orv_qem_kernel_dAtan2_G9HAynn(int32_t n, const double* a, const double* b, double* r);
ORV_API void orv_qem_kernel_dAtan2_G9EPnnn(int32_t n, const double* a, const double* b, double* r);

/** dAtanh: inverse hyperbolic tangent; double.
 *  Largest error: LA 1.75, HA 0.502, EP 1.75 ulp.
 *  Status codes: 1 argument beyond 1 in magnitude, 2 argument 1 or -1. */
extern ORV_API const QemUnary_d orv_qem_kernel_dAtanh_ttab[3];
extern ORV_API const float orv_qem_kernel_dAtanh_ctab[3];
ORV_API void _qemdAtanh_50(int32_t n, const double* a, double* r);
ORV_API void _qemdAtanh_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdAtanh(int32_t n, const double* a, double* r);
ORV_API void _qemdAtanh_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dAtanh_W7LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dAtanh_W7HAynn(int32_t n, const double* a, double* r);

/** dCbrt: cube root, with the sign of x; double.
 *  Largest error: LA 1.54, HA 0.515, EP 1.54 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_d orv_qem_kernel_dCbrt_ttab[3];
extern ORV_API const float orv_qem_kernel_dCbrt_ctab[3];
ORV_API void _qemdCbrt_50(int32_t n, const double* a, double* r);
ORV_API void _qemdCbrt_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdCbrt(int32_t n, const double* a, double* r);
ORV_API void _qemdCbrt_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dCbrt_W7LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dCbrt_W7HAynn(int32_t n, const double* a, double* r);

/** dCdfNorm: distribution function of the normal law, erfc(-x/sqrt(2))/2; double.
 *  Largest error: LA 2, HA 0.61, EP 3.6e+05 ulp.
 *  Status codes: 4 zero result of a finite argument. */
extern ORV_API const QemUnary_d orv_qem_kernel_dCdfNorm_ttab[3];
extern ORV_API const float orv_qem_kernel_dCdfNorm_ctab[3];
ORV_API void _qemdCdfNorm_50(int32_t n, const double* a, double* r);
ORV_API void _qemdCdfNorm_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdCdfNorm(int32_t n, const double* a, double* r);
ORV_API void _qemdCdfNorm_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dCdfNorm_G9LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dCdfNorm_G9HAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dCdfNorm_G9EPnnn(int32_t n, const double* a, double* r);

/** dCdfNormInv: quantile of the standard normal distribution, where CdfNorm is x; double.
 *  Largest error: LA 2.4, HA 0.549, EP 4.52e+07 ulp.
 *  Status codes: 1 argument below 0 or above 1, 2 argument 0 or 1. */
extern ORV_API const QemUnary_d orv_qem_kernel_dCdfNormInv_ttab[3];
extern ORV_API const float orv_qem_kernel_dCdfNormInv_ctab[3];
ORV_API void _qemdCdfNormInv_50(int32_t n, const double* a, double* r);
ORV_API void _qemdCdfNormInv_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdCdfNormInv(int32_t n, const double* a, double* r);
ORV_API void _qemdCdfNormInv_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dCdfNormInv_W7LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dCdfNormInv_W7HAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dCdfNormInv_W7EPnnn(int32_t n, const double* a, double* r);

/** dCeil: least whole number that is not below x; double.
 *  Status codes: none. */
extern ORV_API const QemUnary_d orv_qem_kernel_dCeil_ttab[3];
extern ORV_API const float orv_qem_kernel_dCeil_ctab[3];
ORV_API void _qemdCeil_50(int32_t n, const double* a, double* r);
ORV_API void _qemdCeil_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdCeil(int32_t n, const double* a, double* r);
ORV_API void _qemdCeil_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dCeil_G9HAynn(int32_t n, const double* a, double* r);

/** dCos: cosine, of any finite argument; double.
 *  Largest error: LA 2.62, HA 0.507, EP 1.3e+05 ulp.
 *  Status codes: 1 infinite argument. */
extern ORV_API const QemUnary_d orv_qem_kernel_dCos_ttab[3];
extern ORV_API const float orv_qem_kernel_dCos_ctab[3];
ORV_API void _qemdCos_50(int32_t n, const double* a, double* r);
ORV_API void _qemdCos_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdCos(int32_t n, const double* a, double* r);
ORV_API void _qemdCos_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dCos_G9LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dCos_G9HAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dCos_G9EPnnn(int32_t n, const double* a, double* r);

/** dCosh: hyperbolic cosine; double.
 *  Largest error: LA 1.52, HA 0.53, EP 8.1e+04 ulp.
 *  Status codes: 3 overflow. */
extern ORV_API const QemUnary_d orv_qem_kernel_dCosh_ttab[3];
extern ORV_API const float orv_qem_kernel_dCosh_ctab[3];
ORV_API void _qemdCosh_50(int32_t n, const double* a, double* r);
ORV_API void _qemdCosh_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdCosh(int32_t n, const double* a, double* r);
ORV_API void _qemdCosh_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dCosh_G9LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dCosh_G9HAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dCosh_G9EPnnn(int32_t n, const double* a, double* r);

/** dDiv: quotient; double.
 *  Status codes: 2 zero divisor. */
extern ORV_API const QemBinary_d orv_qem_kernel_dDiv_ttab[3];
extern ORV_API const float orv_qem_kernel_dDiv_ctab[3];
ORV_API void _qemdDiv_50(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdDiv_HA(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdDiv(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdDiv_26(int32_t n, const double* a, const double* b, double* r);
ORV_API void orv_qem_kernel_dDiv_G9LAynn(int32_t n, const double* a, const double* b, double* r);
ORV_API void orv_qem_kernel_dDiv_G9HAynn(int32_t n, const double* a, const double* b, double* r);

/** dErf: error function, odd to the bit; double.
 *  Largest error: LA 2.05, HA 0.52, EP 3.7e+07 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_d orv_qem_kernel_dErf_ttab[3];
extern ORV_API const float orv_qem_kernel_dErf_ctab[3];
ORV_API void _qemdErf_50(int32_t n, const double* a, double* r);
ORV_API void _qemdErf_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdErf(int32_t n, const double* a, double* r);
ORV_API void _qemdErf_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dErf_G9LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dErf_G9HAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dErf_G9EPnnn(int32_t n, const double* a, double* r);

/** dErfInv: inverse of the error function; double.
 *  Largest error: LA 2.1, HA 0.549, EP 6.39e+07 ulp.
 *  Status codes: 1 argument below -1 or above 1, 2 argument -1 or 1. */
extern ORV_API const QemUnary_d orv_qem_kernel_dErfInv_ttab[3];
extern ORV_API const float orv_qem_kernel_dErfInv_ctab[3];
ORV_API void _qemdErfInv_50(int32_t n, const double* a, double* r);
ORV_API void _qemdErfInv_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdErfInv(int32_t n, const double* a, double* r);
ORV_API void _qemdErfInv_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dErfInv_G9LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dErfInv_G9HAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dErfInv_G9EPnnn(int32_t n, const double* a, double* r);

/** dErfc: 1 - erf(x), accurate where it is small; double.
 *  Largest error: LA 2, HA 0.6, EP 2 ulp.
 *  Status codes: 4 denormal or zero result of a finite argument. */
extern ORV_API const QemUnary_d orv_qem_kernel_dErfc_ttab[3];
extern ORV_API const float orv_qem_kernel_dErfc_ctab[3];
ORV_API void _qemdErfc_50(int32_t n, const double* a, double* r);
ORV_API void _qemdErfc_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdErfc(int32_t n, const double* a, double* r);
ORV_API void _qemdErfc_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dErfc_W7LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dErfc_W7HAynn(int32_t n, const double* a, double* r);

/** dErfcInv: inverse of the complementary error function; double.
 *  Largest error: LA 2.7, HA 0.549, EP 6.39e+07 ulp.
 *  Status codes: 1 argument below 0 or above 2, 2 argument 0 or 2. */
extern ORV_API const QemUnary_d orv_qem_kernel_dErfcInv_ttab[3];
extern ORV_API const float orv_qem_kernel_dErfcInv_ctab[3];
ORV_API void _qemdErfcInv_50(int32_t n, const double* a, double* r);
ORV_API void _qemdErfcInv_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdErfcInv(int32_t n, const double* a, double* r);
ORV_API void _qemdErfcInv_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dErfcInv_W7LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dErfcInv_W7HAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dErfcInv_W7EPnnn(int32_t n, const double* a, double* r);

/** dExp: e^x; double.
 *  Largest error: LA 3.17, HA 0.527, EP 5.97e+07 ulp.
 *  Status codes: 3 overflow, 4 denormal or zero result. */
extern ORV_API const QemUnary_d orv_qem_kernel_dExp_ttab[3];
extern ORV_API const float orv_qem_kernel_dExp_ctab[3];
ORV_API void _qemdExp_50(int32_t n, const double* a, double* r);
ORV_API void _qemdExp_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdExp(int32_t n, const double* a, double* r);
ORV_API void _qemdExp_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dExp_G9LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dExp_G9HAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dExp_G9EPnnn(int32_t n, const double* a, double* r);

/** dExpm1: e^x - 1, accurate near 0; double.
 *  Largest error: LA 1.95, HA 0.608, EP 5.19e+06 ulp.
 *  Status codes: 3 overflow, 4 denormal result. */
extern ORV_API const QemUnary_d orv_qem_kernel_dExpm1_ttab[3];
extern ORV_API const float orv_qem_kernel_dExpm1_ctab[3];
ORV_API void _qemdExpm1_50(int32_t n, const double* a, double* r);
ORV_API void _qemdExpm1_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdExpm1(int32_t n, const double* a, double* r);
ORV_API void _qemdExpm1_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dExpm1_V8LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dExpm1_V8HAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dExpm1_V8EPnnn(int32_t n, const double* a, double* r);

/** dFloor: greatest whole number that is not above x; double.
 *  Status codes: none. */
extern ORV_API const QemUnary_d orv_qem_kernel_dFloor_ttab[3];
extern ORV_API const float orv_qem_kernel_dFloor_ctab[3];
ORV_API void _qemdFloor_50(int32_t n, const double* a, double* r);
ORV_API void _qemdFloor_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdFloor(int32_t n, const double* a, double* r);
ORV_API void _qemdFloor_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dFloor_G9HAynn(int32_t n, const double* a, double* r);

/** dHypot: sqrt(a^2 + b^2), infinite beside an infinity even of NaN; double.
 *  Largest error: LA 1.17, HA 0.501, EP 1.17 ulp.
 *  Status codes: none. */
extern ORV_API const QemBinary_d orv_qem_kernel_dHypot_ttab[3];
extern ORV_API const float orv_qem_kernel_dHypot_ctab[3];
ORV_API void _qemdHypot_50(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdHypot_HA(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdHypot(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdHypot_26(int32_t n, const double* a, const double* b, double* r);
ORV_API void orv_qem_kernel_dHypot_G9LAynn(int32_t n, const double* a, const double* b, double* r);
ORV_API void orv_qem_kernel_dHypot_G9HAynn(int32_t n, const double* a, const double* b, double* r);
ORV_API void orv_qem_kernel_dHypot_G9EPnnn(int32_t n, const double* a, const double* b, double* r);

/** dInv: reciprocal; double.
 *  Status codes: 2 zero argument. */
extern ORV_API const QemUnary_d orv_qem_kernel_dInv_ttab[3];
extern ORV_API const float orv_qem_kernel_dInv_ctab[3];
ORV_API void _qemdInv_50(int32_t n, const double* a, double* r);
ORV_API void _qemdInv_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdInv(int32_t n, const double* a, double* r);
ORV_API void _qemdInv_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dInv_G9LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dInv_G9HAynn(int32_t n, const double* a, double* r);

/** dInvCbrt: reciprocal of the cube root; double.
 *  Largest error: LA 0.537, HA 0.537, EP 0.537 ulp.
 *  Status codes: 2 zero argument. */
extern ORV_API const QemUnary_d orv_qem_kernel_dInvCbrt_ttab[3];
extern ORV_API const float orv_qem_kernel_dInvCbrt_ctab[3];
ORV_API void _qemdInvCbrt_50(int32_t n, const double* a, double* r);
ORV_API void _qemdInvCbrt_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdInvCbrt(int32_t n, const double* a, double* r);
ORV_API void _qemdInvCbrt_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dInvCbrt_W7HAynn(int32_t n, const double* a, double* r);

/** dInvSqrt: 1/sqrt(x); double.
 *  Largest error: LA 1.5, HA 0.501, EP 1.5 ulp.
 *  Status codes: 1 negative argument, 2 zero. */
extern ORV_API const QemUnary_d orv_qem_kernel_dInvSqrt_ttab[3];
extern ORV_API const float orv_qem_kernel_dInvSqrt_ctab[3];
ORV_API void _qemdInvSqrt_50(int32_t n, const double* a, double* r);
ORV_API void _qemdInvSqrt_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdInvSqrt(int32_t n, const double* a, double* r);
ORV_API void _qemdInvSqrt_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dInvSqrt_W7LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dInvSqrt_W7HAynn(int32_t n, const double* a, double* r);

/** dLinearFrac: (scalea a + shifta)/(scaleb b + shiftb); with scaleb 0 by way of 1/shiftb, within 1.5 ulp; double.
 *  Status codes: none. */
extern ORV_API const QemFractionalLinear_d orv_qem_kernel_dLinearFrac_ttab[3];
extern ORV_API const float orv_qem_kernel_dLinearFrac_ctab[3];
ORV_API void _qemdLinearFrac_50(int32_t n, const double* a, const double* b, double scalea, double shifta, double scaleb, double shiftb, double* r);
ORV_API void _qemdLinearFrac_HA(int32_t n, const double* a, const double* b, double scalea, double shifta, double scaleb, double shiftb, double* r);
ORV_API void _qemdLinearFrac(int32_t n, const double* a, const double* b, double scalea, double shifta, double scaleb, double shiftb, double* r);
ORV_API void _qemdLinearFrac_26(int32_t n, const double* a, const double* b, double scalea, double shifta, double scaleb, double shiftb, double* r);
ORV_API void orv_qem_kernel_dLinearFrac_N8HAynn(int32_t n, const double* a, const double* b, double scalea, double shifta, double scaleb, double shiftb, double* r);

/** dLn: natural logarithm; double.
 *  Largest error: LA 1.59, HA 0.501, EP 2.1e+06 ulp.
 *  Status codes: 1 negative argument, 2 zero. */
extern ORV_API const QemUnary_d orv_qem_kernel_dLn_ttab[3];
extern ORV_API const float orv_qem_kernel_dLn_ctab[3];
ORV_API void _qemdLn_50(int32_t n, const double* a, double* r);
ORV_API void _qemdLn_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdLn(int32_t n, const double* a, double* r);
ORV_API void _qemdLn_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dLn_G9LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dLn_G9HAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dLn_G9EPnnn(int32_t n, const double* a, double* r);

/** dLog10: decimal logarithm; double.
 *  Largest error: LA 1.93, HA 0.503, EP 1.93 ulp.
 *  Status codes: 1 negative argument, 2 zero. */
extern ORV_API const QemUnary_d orv_qem_kernel_dLog10_ttab[3];
extern ORV_API const float orv_qem_kernel_dLog10_ctab[3];
ORV_API void _qemdLog10_50(int32_t n, const double* a, double* r);
ORV_API void _qemdLog10_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdLog10(int32_t n, const double* a, double* r);
ORV_API void _qemdLog10_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dLog10_G9LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dLog10_G9HAynn(int32_t n, const double* a, double* r);

/** dLog1p: ln(1 + x), accurate near 0; double.
 *  Largest error: LA 1.7, HA 0.501, EP 2.1e+06 ulp.
 *  Status codes: 1 argument below -1, 2 argument -1. */
extern ORV_API const QemUnary_d orv_qem_kernel_dLog1p_ttab[3];
extern ORV_API const float orv_qem_kernel_dLog1p_ctab[3];
ORV_API void _qemdLog1p_50(int32_t n, const double* a, double* r);
ORV_API void _qemdLog1p_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdLog1p(int32_t n, const double* a, double* r);
ORV_API void _qemdLog1p_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dLog1p_V8LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dLog1p_V8HAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dLog1p_V8EPnnn(int32_t n, const double* a, double* r);

/** dModf: integral part towards zero and fractional part, both with x's sign; double.
 *  Status codes: none. */
extern ORV_API const QemTwoResults_d orv_qem_kernel_dModf_ttab[3];
extern ORV_API const float orv_qem_kernel_dModf_ctab[3];
ORV_API void _qemdModf_50(int32_t n, const double* a, double* r1, double* r2);
ORV_API void _qemdModf_HA(int32_t n, const double* a, double* r1, double* r2);
ORV_API void _qemdModf(int32_t n, const double* a, double* r1, double* r2);
ORV_API void _qemdModf_26(int32_t n, const double* a, double* r1, double* r2);
ORV_API void orv_qem_kernel_dModf_W7HAynn(int32_t n, const double* a, double* r1, double* r2);

/** dMul: product; under overlap as if element by element, ascending; double.
 *  Status codes: none. */
extern ORV_API const QemBinary_d orv_qem_kernel_dMul_ttab[3];
extern ORV_API const float orv_qem_kernel_dMul_ctab[3];
ORV_API void _qemdMul_50(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdMul_HA(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdMul(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdMul_26(int32_t n, const double* a, const double* b, double* r);
ORV_API void orv_qem_kernel_dMul_G9HAynn(int32_t n, const double* a, const double* b, double* r);

/** dNearbyInt: whole number by the caller's rounding mode, inexact flag as before; double.
 *  Status codes: none. */
extern ORV_API const QemUnary_d orv_qem_kernel_dNearbyInt_ttab[3];
extern ORV_API const float orv_qem_kernel_dNearbyInt_ctab[3];
ORV_API void _qemdNearbyInt_50(int32_t n, const double* a, double* r);
ORV_API void _qemdNearbyInt_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdNearbyInt(int32_t n, const double* a, double* r);
ORV_API void _qemdNearbyInt_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dNearbyInt_P8HAynn(int32_t n, const double* a, double* r);

/** dPackI: elements at a distance, which may be 0 or negative, to a dense vector; double.
 *  Status codes: none. */
extern ORV_API const QemStridedPack_d orv_qem_kernel_dPackI_ttab[3];
extern ORV_API const float orv_qem_kernel_dPackI_ctab[3];
ORV_API void _qemdPackI_50(int64_t n, const double* a, int64_t incr, double* y);
ORV_API void _qemdPackI_HA(int64_t n, const double* a, int64_t incr, double* y);
ORV_API void _qemdPackI(int64_t n, const double* a, int64_t incr, double* y);
ORV_API void _qemdPackI_26(int64_t n, const double* a, int64_t incr, double* y);
ORV_API void orv_qem_kernel_dPackI_PXHAynn(int64_t n, const double* a, int64_t incr, double* y, int32_t narrow);

/** dPackM: elements whose mask is not 0, to a dense vector; double.
 *  Status codes: none. */
extern ORV_API const QemMaskedPack_d orv_qem_kernel_dPackM_ttab[3];
extern ORV_API const float orv_qem_kernel_dPackM_ctab[3];
ORV_API void _qemdPackM_50(int64_t n, const double* a, const int32_t* ma, double* y);
ORV_API void _qemdPackM_HA(int64_t n, const double* a, const int32_t* ma, double* y);
ORV_API void _qemdPackM(int64_t n, const double* a, const int32_t* ma, double* y);
ORV_API void _qemdPackM_26(int64_t n, const double* a, const int32_t* ma, double* y);
ORV_API void orv_qem_kernel_dPackM_PXHAynn(int64_t n, const double* a, const void* ma, double* y, int32_t narrow);

/** dPackV: elements at places told by indices, to a dense vector; double.
 *  Status codes: none. */
extern ORV_API const QemIndexedPack_d orv_qem_kernel_dPackV_ttab[3];
extern ORV_API const float orv_qem_kernel_dPackV_ctab[3];
ORV_API void _qemdPackV_50(int64_t n, const double* a, const int32_t* ia, double* y);
ORV_API void _qemdPackV_HA(int64_t n, const double* a, const int32_t* ia, double* y);
ORV_API void _qemdPackV(int64_t n, const double* a, const int32_t* ia, double* y);
ORV_API void _qemdPackV_26(int64_t n, const double* a, const int32_t* ia, double* y);
ORV_API void orv_qem_kernel_dPackV_PXHAynn(int64_t n, const double* a, const void* ia, double* y, int32_t narrow);

/** dPow: a^b; double.
 *  Largest error: LA 1.24, HA 0.56, EP 1.7e+07 ulp.
 *  Status codes: 1 zero to a negative power, finite negative to a fraction; over- and underflow are silent. */
extern ORV_API const QemBinary_d orv_qem_kernel_dPow_ttab[3];
extern ORV_API const float orv_qem_kernel_dPow_ctab[3];
ORV_API void _qemdPow_50(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdPow_HA(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdPow(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdPow_26(int32_t n, const double* a, const double* b, double* r);
ORV_API void orv_qem_kernel_dPow_N8LAynn(int32_t n, const double* a, const double* b, double* r);
ORV_API void orv_qem_kernel_dPow_N8HAynn(int32_t n, const double* a, const double* b, double* r);
ORV_API void orv_qem_kernel_dPow_N8EPnnn(int32_t n, const double* a, const double* b, double* r);

/** dPow2o3: x^(2/3), the square of the cube root, of numbers of either sign; double.
 *  Largest error: LA 0.533, HA 0.533, EP 7.11e+06 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_d orv_qem_kernel_dPow2o3_ttab[3];
extern ORV_API const float orv_qem_kernel_dPow2o3_ctab[3];
ORV_API void _qemdPow2o3_50(int32_t n, const double* a, double* r);
ORV_API void _qemdPow2o3_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdPow2o3(int32_t n, const double* a, double* r);
ORV_API void _qemdPow2o3_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dPow2o3_W7HAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dPow2o3_W7EPnnn(int32_t n, const double* a, double* r);

/** dPow3o2: x^(3/2); double.
 *  Largest error: LA 1.29, HA 0.501, EP 1.29 ulp.
 *  Status codes: 1 negative argument. */
extern ORV_API const QemUnary_d orv_qem_kernel_dPow3o2_ttab[3];
extern ORV_API const float orv_qem_kernel_dPow3o2_ctab[3];
ORV_API void _qemdPow3o2_50(int32_t n, const double* a, double* r);
ORV_API void _qemdPow3o2_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdPow3o2(int32_t n, const double* a, double* r);
ORV_API void _qemdPow3o2_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dPow3o2_W7LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dPow3o2_W7HAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dPow3o2_W7EPnnn(int32_t n, const double* a, double* r);

/** dPowx: a^b, by functions of their own for b of -1, 1, 2, the halves and thirds; double.
 *  Largest error: LA 1.5, HA 0.56, EP 1.7e+07 ulp.
 *  Status codes: 1 as Pow; those of Inv, Sqrt and their kin at such b. */
extern ORV_API const QemScalarSecond_d orv_qem_kernel_dPowx_ttab[3];
extern ORV_API const float orv_qem_kernel_dPowx_ctab[3];
ORV_API void _qemdPowx_50(int32_t n, const double* a, double b, double* r);
ORV_API void _qemdPowx_HA(int32_t n, const double* a, double b, double* r);
ORV_API void _qemdPowx(int32_t n, const double* a, double b, double* r);
ORV_API void _qemdPowx_26(int32_t n, const double* a, double b, double* r);
ORV_API void orv_qem_kernel_dPowx_G9LAynn(int32_t n, const double* a, double b, double* r);
ORV_API void orv_qem_kernel_dPowx_G9HAynn(int32_t n, const double* a, double b, double* r);
ORV_API void orv_qem_kernel_dPowx_G9EPnnn(int32_t n, const double* a, double b, double* r);

/** dRint: whole number by the caller's rounding mode, with the inexact flag; double.
 *  Status codes: none. */
extern ORV_API const QemUnary_d orv_qem_kernel_dRint_ttab[3];
extern ORV_API const float orv_qem_kernel_dRint_ctab[3];
ORV_API void _qemdRint_50(int32_t n, const double* a, double* r);
ORV_API void _qemdRint_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdRint(int32_t n, const double* a, double* r);
ORV_API void _qemdRint_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dRint_P8HAynn(int32_t n, const double* a, double* r);

/** dRound: nearest whole number, ties away from zero; double.
 *  Status codes: none. */
extern ORV_API const QemUnary_d orv_qem_kernel_dRound_ttab[3];
extern ORV_API const float orv_qem_kernel_dRound_ctab[3];
ORV_API void _qemdRound_50(int32_t n, const double* a, double* r);
ORV_API void _qemdRound_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdRound(int32_t n, const double* a, double* r);
ORV_API void _qemdRound_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dRound_G9HAynn(int32_t n, const double* a, double* r);

/** dSin: sine, of any finite argument; double.
 *  Largest error: LA 2.96, HA 0.506, EP 1.3e+05 ulp.
 *  Status codes: 1 infinite argument. */
extern ORV_API const QemUnary_d orv_qem_kernel_dSin_ttab[3];
extern ORV_API const float orv_qem_kernel_dSin_ctab[3];
ORV_API void _qemdSin_50(int32_t n, const double* a, double* r);
ORV_API void _qemdSin_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdSin(int32_t n, const double* a, double* r);
ORV_API void _qemdSin_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dSin_G9LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dSin_G9HAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dSin_G9EPnnn(int32_t n, const double* a, double* r);

/** dSinCos: sine and cosine, to the bit those of Sin and Cos; double.
 *  Largest error: LA 2.96, HA 0.507, EP 1.3e+05 ulp.
 *  Status codes: 1 infinite argument. */
extern ORV_API const QemTwoResults_d orv_qem_kernel_dSinCos_ttab[3];
extern ORV_API const float orv_qem_kernel_dSinCos_ctab[3];
ORV_API void _qemdSinCos_50(int32_t n, const double* a, double* r1, double* r2);
ORV_API void _qemdSinCos_HA(int32_t n, const double* a, double* r1, double* r2);
ORV_API void _qemdSinCos(int32_t n, const double* a, double* r1, double* r2);
ORV_API void _qemdSinCos_26(int32_t n, const double* a, double* r1, double* r2);
ORV_API void orv_qem_kernel_dSinCos_G9LAynn(int32_t n, const double* a, double* r1, double* r2);
ORV_API void orv_qem_kernel_dSinCos_G9HAynn(int32_t n, const double* a, double* r1, double* r2);
ORV_API void orv_qem_kernel_dSinCos_G9EPnnn(int32_t n, const double* a, double* r1, double* r2);

/** dSinh: hyperbolic sine, accurate near 0; double.
 *  Largest error: LA 2.46, HA 0.546, EP 2.46 ulp.
 *  Status codes: 3 overflow. */
extern ORV_API const QemUnary_d orv_qem_kernel_dSinh_ttab[3];
extern ORV_API const float orv_qem_kernel_dSinh_ctab[3];
ORV_API void _qemdSinh_50(int32_t n, const double* a, double* r);
ORV_API void _qemdSinh_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdSinh(int32_t n, const double* a, double* r);
ORV_API void _qemdSinh_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dSinh_G9LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dSinh_W7HAynn(int32_t n, const double* a, double* r);

/** dSqr: square; under overlap as if element by element, ascending; double.
 *  Status codes: none. */
extern ORV_API const QemUnary_d orv_qem_kernel_dSqr_ttab[3];
extern ORV_API const float orv_qem_kernel_dSqr_ctab[3];
ORV_API void _qemdSqr_50(int32_t n, const double* a, double* r);
ORV_API void _qemdSqr_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdSqr(int32_t n, const double* a, double* r);
ORV_API void _qemdSqr_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dSqr_G9HAynn(int32_t n, const double* a, double* r);

/** dSqrt: square root; double.
 *  Status codes: 1 negative argument. */
extern ORV_API const QemUnary_d orv_qem_kernel_dSqrt_ttab[3];
extern ORV_API const float orv_qem_kernel_dSqrt_ctab[3];
ORV_API void _qemdSqrt_50(int32_t n, const double* a, double* r);
ORV_API void _qemdSqrt_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdSqrt(int32_t n, const double* a, double* r);
ORV_API void _qemdSqrt_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dSqrt_G9LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dSqrt_G9HAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dSqrt_G9EPnnn(int32_t n, const double* a, double* r);

/** dSub: difference; under overlap as if element by element, ascending; double.
 *  Status codes: none. */
extern ORV_API const QemBinary_d orv_qem_kernel_dSub_ttab[3];
extern ORV_API const float orv_qem_kernel_dSub_ctab[3];
ORV_API void _qemdSub_50(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdSub_HA(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdSub(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdSub_26(int32_t n, const double* a, const double* b, double* r);
ORV_API void orv_qem_kernel_dSub_G9HAynn(int32_t n, const double* a, const double* b, double* r);

/** dTan: tangent, of any finite argument; double.
 *  Largest error: LA 3.31, HA 0.542, EP 2.92e+05 ulp.
 *  Status codes: 1 infinite argument. */
extern ORV_API const QemUnary_d orv_qem_kernel_dTan_ttab[3];
extern ORV_API const float orv_qem_kernel_dTan_ctab[3];
ORV_API void _qemdTan_50(int32_t n, const double* a, double* r);
ORV_API void _qemdTan_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdTan(int32_t n, const double* a, double* r);
ORV_API void _qemdTan_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dTan_G9LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dTan_G9HAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dTan_G9EPnnn(int32_t n, const double* a, double* r);

/** dTanh: hyperbolic tangent, accurate near 0; double.
 *  Largest error: LA 1.22, HA 0.53, EP 1.13e+06 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_d orv_qem_kernel_dTanh_ttab[3];
extern ORV_API const float orv_qem_kernel_dTanh_ctab[3];
ORV_API void _qemdTanh_50(int32_t n, const double* a, double* r);
ORV_API void _qemdTanh_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdTanh(int32_t n, const double* a, double* r);
ORV_API void _qemdTanh_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dTanh_G9LAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dTanh_G9HAynn(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dTanh_G9EPnnn(int32_t n, const double* a, double* r);

/** dTrunc: integral part, towards zero; double.
 *  Status codes: none. */
extern ORV_API const QemUnary_d orv_qem_kernel_dTrunc_ttab[3];
extern ORV_API const float orv_qem_kernel_dTrunc_ctab[3];
ORV_API void _qemdTrunc_50(int32_t n, const double* a, double* r);
ORV_API void _qemdTrunc_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdTrunc(int32_t n, const double* a, double* r);
ORV_API void _qemdTrunc_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dTrunc_G9HAynn(int32_t n, const double* a, double* r);

/** dUnpackI: a dense vector to elements at a distance, which may be 0 or negative; double.
 *  Status codes: none. */
extern ORV_API const QemStridedUnpack_d orv_qem_kernel_dUnpackI_ttab[3];
extern ORV_API const float orv_qem_kernel_dUnpackI_ctab[3];
ORV_API void _qemdUnpackI_50(int64_t n, const double* a, double* y, int64_t incr);
ORV_API void _qemdUnpackI_HA(int64_t n, const double* a, double* y, int64_t incr);
ORV_API void _qemdUnpackI(int64_t n, const double* a, double* y, int64_t incr);
ORV_API void _qemdUnpackI_26(int64_t n, const double* a, double* y, int64_t incr);
ORV_API void orv_qem_kernel_dUnpackI_PXHAynn(int64_t n, const double* a, double* y, int64_t incr, int32_t narrow);

/** dUnpackM: a dense vector to the elements whose mask is not 0; double.
 *  Status codes: none. */
extern ORV_API const QemMaskedUnpack_d orv_qem_kernel_dUnpackM_ttab[3];
extern ORV_API const float orv_qem_kernel_dUnpackM_ctab[3];
ORV_API void _qemdUnpackM_50(int64_t n, const double* a, double* y, const int32_t* my);
ORV_API void _qemdUnpackM_HA(int64_t n, const double* a, double* y, const int32_t* my);
ORV_API void _qemdUnpackM(int64_t n, const double* a, double* y, const int32_t* my);
ORV_API void _qemdUnpackM_26(int64_t n, const double* a, double* y, const int32_t* my);
ORV_API void orv_qem_kernel_dUnpackM_PXHAynn(int64_t n, const double* a, double* y, const void* my, int32_t narrow);

/** dUnpackV: a dense vector to elements at places told by indices; double.
 *  Status codes: none. */
extern ORV_API const QemIndexedUnpack_d orv_qem_kernel_dUnpackV_ttab[3];
extern ORV_API const float orv_qem_kernel_dUnpackV_ctab[3];
ORV_API void _qemdUnpackV_50(int64_t n, const double* a, double* y, const int32_t* iy);
ORV_API void _qemdUnpackV_HA(int64_t n, const double* a, double* y, const int32_t* iy);
ORV_API void _qemdUnpackV(int64_t n, const double* a, double* y, const int32_t* iy);
ORV_API void _qemdUnpackV_26(int64_t n, const double* a, double* y, const int32_t* iy);
ORV_API void orv_qem_kernel_dUnpackV_PXHAynn(int64_t n, const double* a, double* y, const void* iy, int32_t narrow);

/** cAbs: size of a complex number, without intermediate overflow or underflow; complex float.
 *  Largest error: LA 0.501, HA 0.501, EP 0.501 ulp.
 *  Status codes: none. */
extern ORV_API const QemComplexToReal_c orv_qem_kernel_cAbs_ttab[3];
extern ORV_API const float orv_qem_kernel_cAbs_ctab[3];
ORV_API void _qemcAbs_21(int32_t n, const QemComplexFloat* a, float* r);
ORV_API void _qemcAbs_HA(int32_t n, const QemComplexFloat* a, float* r);
ORV_API void _qemcAbs(int32_t n, const QemComplexFloat* a, float* r);
ORV_API void _qemcAbs_11(int32_t n, const QemComplexFloat* a, float* r);
ORV_API void orv_qem_kernel_cAbs_W7HAynn(int32_t n, const QemComplexFloat* a, float* r);

/** cAcos: arc cosine, Re from 0 to pi; cuts from -inf to -1 and from 1 to inf; complex float.
 *  Largest error: LA 0.501, HA 0.501, EP 0.501 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_c orv_qem_kernel_cAcos_ttab[3];
extern ORV_API const float orv_qem_kernel_cAcos_ctab[3];
ORV_API void _qemcAcos_21(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcAcos_HA(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcAcos(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcAcos_11(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cAcos_PXHAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);

/** cAcosh: inverse hyperbolic cosine, Re not negative; cut from -inf to 1; complex float.
 *  Largest error: LA 0.501, HA 0.501, EP 0.501 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_c orv_qem_kernel_cAcosh_ttab[3];
extern ORV_API const float orv_qem_kernel_cAcosh_ctab[3];
ORV_API void _qemcAcosh_21(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcAcosh_HA(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcAcosh(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcAcosh_11(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cAcosh_PXHAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);

/** cAdd: complex sum; complex float.
 *  Status codes: 3 overflow of finite arguments without a zero part. */
extern ORV_API const QemBinary_c orv_qem_kernel_cAdd_ttab[3];
extern ORV_API const float orv_qem_kernel_cAdd_ctab[3];
ORV_API void _qemcAdd_21(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void _qemcAdd_HA(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void _qemcAdd(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void _qemcAdd_11(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cAdd_W7HAynn(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);

/** cArg: angle of a complex number, from -pi to pi, zeros by their signs; complex float.
 *  Largest error: LA 2.14, HA 0.55, EP 298 ulp.
 *  Status codes: none. */
extern ORV_API const QemComplexToReal_c orv_qem_kernel_cArg_ttab[3];
extern ORV_API const float orv_qem_kernel_cArg_ctab[3];
ORV_API void _qemcArg_21(int32_t n, const QemComplexFloat* a, float* r);
ORV_API void _qemcArg_HA(int32_t n, const QemComplexFloat* a, float* r);
ORV_API void _qemcArg(int32_t n, const QemComplexFloat* a, float* r);
ORV_API void _qemcArg_11(int32_t n, const QemComplexFloat* a, float* r);
ORV_API void orv_qem_kernel_cArg_W7LAynn(int32_t n, const QemComplexFloat* a, float* r);
ORV_API void orv_qem_kernel_cArg_W7HAynn(int32_t n, const QemComplexFloat* a, float* r);
ORV_API void orv_qem_kernel_cArg_W7EPnnn(int32_t n, const QemComplexFloat* a, float* r);

/** cAsin: arc sine; cuts from -inf to -1 and from 1 to inf; complex float.
 *  Largest error: LA 0.501, HA 0.501, EP 0.501 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_c orv_qem_kernel_cAsin_ttab[3];
extern ORV_API const float orv_qem_kernel_cAsin_ctab[3];
ORV_API void _qemcAsin_21(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcAsin_HA(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcAsin(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcAsin_11(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cAsin_PXHAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);

/** cAsinh: inverse hyperbolic sine; cuts along the imaginary axis beyond i and -i; complex float.
 *  Largest error: LA 0.501, HA 0.501, EP 0.501 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_c orv_qem_kernel_cAsinh_ttab[3];
extern ORV_API const float orv_qem_kernel_cAsinh_ctab[3];
ORV_API void _qemcAsinh_21(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcAsinh_HA(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcAsinh(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcAsinh_11(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cAsinh_PXHAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);

/** cAtan: arc tangent; cuts along the imaginary axis beyond i and -i; complex float.
 *  Largest error: LA 0.501, HA 0.501, EP 0.501 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_c orv_qem_kernel_cAtan_ttab[3];
extern ORV_API const float orv_qem_kernel_cAtan_ctab[3];
ORV_API void _qemcAtan_21(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcAtan_HA(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcAtan(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcAtan_11(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cAtan_PXHAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);

/** cAtanh: inverse hyperbolic tangent; cuts from -inf to -1 and from 1 to inf; complex float.
 *  Largest error: LA 0.501, HA 0.501, EP 0.501 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_c orv_qem_kernel_cAtanh_ttab[3];
extern ORV_API const float orv_qem_kernel_cAtanh_ctab[3];
ORV_API void _qemcAtanh_21(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcAtanh_HA(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcAtanh(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcAtanh_11(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cAtanh_PXHAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);

/** cCIS: cos(x) + i sin(x) of a real x; complex float.
 *  Largest error: LA 0.555, HA 0.555, EP 0.555 ulp.
 *  Status codes: 1 infinite argument. */
extern ORV_API const QemRealToComplex_c orv_qem_kernel_cCIS_ttab[3];
extern ORV_API const float orv_qem_kernel_cCIS_ctab[3];
ORV_API void _qemcCIS_21(int32_t n, const float* a, QemComplexFloat* r);
ORV_API void _qemcCIS_HA(int32_t n, const float* a, QemComplexFloat* r);
ORV_API void _qemcCIS(int32_t n, const float* a, QemComplexFloat* r);
ORV_API void _qemcCIS_11(int32_t n, const float* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cCIS_W7HAynn(int32_t n, const float* a, QemComplexFloat* r);

/** cConj: complex conjugate, an exact bit operation; complex float.
 *  Status codes: none. */
extern ORV_API const QemUnary_c orv_qem_kernel_cConj_ttab[3];
extern ORV_API const float orv_qem_kernel_cConj_ctab[3];
ORV_API void _qemcConj_21(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcConj_HA(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcConj(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcConj_11(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cConj_W7HAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);

/** cCos: complex cosine; complex float.
 *  Largest error: LA 0.501, HA 0.501, EP 0.501 ulp.
 *  Status codes: 3 overflow of a finite argument. */
extern ORV_API const QemUnary_c orv_qem_kernel_cCos_ttab[3];
extern ORV_API const float orv_qem_kernel_cCos_ctab[3];
ORV_API void _qemcCos_21(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcCos_HA(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcCos(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcCos_11(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cCos_PXHAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);

/** cCosh: complex hyperbolic cosine; complex float.
 *  Largest error: LA 0.501, HA 0.501, EP 0.501 ulp.
 *  Status codes: 3 overflow of a finite argument. */
extern ORV_API const QemUnary_c orv_qem_kernel_cCosh_ttab[3];
extern ORV_API const float orv_qem_kernel_cCosh_ctab[3];
ORV_API void _qemcCosh_21(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcCosh_HA(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcCosh(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcCosh_11(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cCosh_PXHAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);

/** cDiv: complex quotient; of zero divisors and infinities as C99, annex G, tells; complex float.
 *  Largest error: LA 0.501, HA 0.501, EP 2.15 ulp.
 *  Status codes: 3 overflow of finite arguments without a zero part, not at EP. */
extern ORV_API const QemBinary_c orv_qem_kernel_cDiv_ttab[3];
extern ORV_API const float orv_qem_kernel_cDiv_ctab[3];
ORV_API void _qemcDiv_21(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void _qemcDiv_HA(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void _qemcDiv(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void _qemcDiv_11(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cDiv_W7HAynn(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cDiv_W7EPnnn(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);

/** cExp: complex exponential; complex float.
 *  Largest error: LA 2.12, HA 0.56, EP 2.12 ulp.
 *  Status codes: 3 overflow of a finite argument. */
extern ORV_API const QemUnary_c orv_qem_kernel_cExp_ttab[3];
extern ORV_API const float orv_qem_kernel_cExp_ctab[3];
ORV_API void _qemcExp_21(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcExp_HA(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcExp(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcExp_11(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cExp_W7LAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cExp_W7HAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);

/** cLn: complex natural logarithm; cut from -inf to 0; complex float.
 *  Largest error: LA 2.02, HA 0.55, EP 620 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_c orv_qem_kernel_cLn_ttab[3];
extern ORV_API const float orv_qem_kernel_cLn_ctab[3];
ORV_API void _qemcLn_21(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcLn_HA(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcLn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcLn_11(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cLn_W7LAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cLn_W7HAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cLn_W7EPnnn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);

/** cLog10: complex decimal logarithm; cut from -inf to 0; complex float.
 *  Largest error: LA 0.501, HA 0.501, EP 0.501 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_c orv_qem_kernel_cLog10_ttab[3];
extern ORV_API const float orv_qem_kernel_cLog10_ctab[3];
ORV_API void _qemcLog10_21(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcLog10_HA(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcLog10(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcLog10_11(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cLog10_PXHAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);

/** cMul: complex product; complex float.
 *  Largest error: LA 0.501, HA 0.501, EP 1.0 ulp.
 *  Status codes: 3 overflow of finite arguments without a zero part, not at EP. */
extern ORV_API const QemBinary_c orv_qem_kernel_cMul_ttab[3];
extern ORV_API const float orv_qem_kernel_cMul_ctab[3];
ORV_API void _qemcMul_21(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void _qemcMul_HA(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void _qemcMul(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void _qemcMul_11(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cMul_W7HAynn(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cMul_W7EPnnn(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);

/** cMulByConj: a times the conjugate of b; complex float.
 *  Largest error: LA 0.501, HA 0.501, EP 1.0 ulp.
 *  Status codes: 3 overflow of finite arguments without a zero part, not at EP. */
extern ORV_API const QemBinary_c orv_qem_kernel_cMulByConj_ttab[3];
extern ORV_API const float orv_qem_kernel_cMulByConj_ctab[3];
ORV_API void _qemcMulByConj_21(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void _qemcMulByConj_HA(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void _qemcMulByConj(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void _qemcMulByConj_11(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cMulByConj_W7HAynn(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cMulByConj_W7EPnnn(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);

/** cPow: a^b as e^(b ln a), 0 and infinities by what these make of them; complex float.
 *  Largest error: LA 0.71, HA 0.71, EP 0.71 ulp.
 *  Status codes: 3 overflow of finite arguments. */
extern ORV_API const QemBinary_c orv_qem_kernel_cPow_ttab[3];
extern ORV_API const float orv_qem_kernel_cPow_ctab[3];
ORV_API void _qemcPow_21(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void _qemcPow_HA(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void _qemcPow(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void _qemcPow_11(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cPow_PXHAynn(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);

/** cPowx: a^b as Pow, one b for all elements; complex float.
 *  Largest error: LA 0.71, HA 0.71, EP 0.71 ulp.
 *  Status codes: 3 overflow of finite arguments. */
extern ORV_API const QemScalarSecond_c orv_qem_kernel_cPowx_ttab[3];
extern ORV_API const float orv_qem_kernel_cPowx_ctab[3];
ORV_API void _qemcPowx_21(int32_t n, const QemComplexFloat* a, QemComplexFloat b, QemComplexFloat* r);
ORV_API void _qemcPowx_HA(int32_t n, const QemComplexFloat* a, QemComplexFloat b, QemComplexFloat* r);
ORV_API void _qemcPowx(int32_t n, const QemComplexFloat* a, QemComplexFloat b, QemComplexFloat* r);
ORV_API void _qemcPowx_11(int32_t n, const QemComplexFloat* a, QemComplexFloat b, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cPowx_PXHAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat b, QemComplexFloat* r);

/** cSin: complex sine; complex float.
 *  Largest error: LA 0.501, HA 0.501, EP 0.501 ulp.
 *  Status codes: 3 overflow of a finite argument. */
extern ORV_API const QemUnary_c orv_qem_kernel_cSin_ttab[3];
extern ORV_API const float orv_qem_kernel_cSin_ctab[3];
ORV_API void _qemcSin_21(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcSin_HA(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcSin(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcSin_11(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cSin_PXHAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);

/** cSinh: complex hyperbolic sine; complex float.
 *  Largest error: LA 0.501, HA 0.501, EP 0.501 ulp.
 *  Status codes: 3 overflow of a finite argument. */
extern ORV_API const QemUnary_c orv_qem_kernel_cSinh_ttab[3];
extern ORV_API const float orv_qem_kernel_cSinh_ctab[3];
ORV_API void _qemcSinh_21(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcSinh_HA(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcSinh(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcSinh_11(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cSinh_PXHAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);

/** cSqrt: complex square root, Re not negative; cut from -inf to 0; complex float.
 *  Largest error: LA 1.25, HA 0.501, EP 1.25 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_c orv_qem_kernel_cSqrt_ttab[3];
extern ORV_API const float orv_qem_kernel_cSqrt_ctab[3];
ORV_API void _qemcSqrt_21(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcSqrt_HA(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcSqrt(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcSqrt_11(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cSqrt_N8LAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cSqrt_W7HAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);

/** cSub: complex difference; complex float.
 *  Status codes: 3 overflow of finite arguments without a zero part. */
extern ORV_API const QemBinary_c orv_qem_kernel_cSub_ttab[3];
extern ORV_API const float orv_qem_kernel_cSub_ctab[3];
ORV_API void _qemcSub_21(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void _qemcSub_HA(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void _qemcSub(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void _qemcSub_11(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cSub_W7HAynn(int32_t n, const QemComplexFloat* a, const QemComplexFloat* b, QemComplexFloat* r);

/** cTan: complex tangent; complex float.
 *  Largest error: LA 0.501, HA 0.501, EP 0.501 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_c orv_qem_kernel_cTan_ttab[3];
extern ORV_API const float orv_qem_kernel_cTan_ctab[3];
ORV_API void _qemcTan_21(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcTan_HA(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcTan(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcTan_11(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cTan_PXHAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);

/** cTanh: complex hyperbolic tangent; complex float.
 *  Largest error: LA 0.501, HA 0.501, EP 0.501 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_c orv_qem_kernel_cTanh_ttab[3];
extern ORV_API const float orv_qem_kernel_cTanh_ctab[3];
ORV_API void _qemcTanh_21(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcTanh_HA(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcTanh(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcTanh_11(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cTanh_PXHAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);

/** zAbs: size of a complex number, without intermediate overflow or underflow; complex double.
 *  Largest error: LA 0.501, HA 0.501, EP 0.501 ulp.
 *  Status codes: none. */
extern ORV_API const QemComplexToReal_z orv_qem_kernel_zAbs_ttab[3];
extern ORV_API const float orv_qem_kernel_zAbs_ctab[3];
ORV_API void _qemzAbs_50(int32_t n, const QemComplexDouble* a, double* r);
ORV_API void _qemzAbs_HA(int32_t n, const QemComplexDouble* a, double* r);
ORV_API void _qemzAbs(int32_t n, const QemComplexDouble* a, double* r);
ORV_API void _qemzAbs_26(int32_t n, const QemComplexDouble* a, double* r);
ORV_API void orv_qem_kernel_zAbs_W7HAynn(int32_t n, const QemComplexDouble* a, double* r);

/** zAcos: arc cosine, Re from 0 to pi; cuts from -inf to -1 and from 1 to inf; complex double.
 *  Largest error: LA 0.503, HA 0.503, EP 0.503 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_z orv_qem_kernel_zAcos_ttab[3];
extern ORV_API const float orv_qem_kernel_zAcos_ctab[3];
ORV_API void _qemzAcos_50(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzAcos_HA(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzAcos(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzAcos_26(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zAcos_PXHAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);

/** zAcosh: inverse hyperbolic cosine, Re not negative; cut from -inf to 1; complex double.
 *  Largest error: LA 0.503, HA 0.503, EP 0.503 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_z orv_qem_kernel_zAcosh_ttab[3];
extern ORV_API const float orv_qem_kernel_zAcosh_ctab[3];
ORV_API void _qemzAcosh_50(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzAcosh_HA(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzAcosh(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzAcosh_26(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zAcosh_PXHAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);

/** zAdd: complex sum; complex double.
 *  Status codes: 3 overflow of finite arguments without a zero part. */
extern ORV_API const QemBinary_z orv_qem_kernel_zAdd_ttab[3];
extern ORV_API const float orv_qem_kernel_zAdd_ctab[3];
ORV_API void _qemzAdd_50(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void _qemzAdd_HA(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void _qemzAdd(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void _qemzAdd_26(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zAdd_W7HAynn(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);

/** zArg: angle of a complex number, from -pi to pi, zeros by their signs; complex double.
 *  Largest error: LA 2.27, HA 0.541, EP 2.27 ulp.
 *  Status codes: none. */
extern ORV_API const QemComplexToReal_z orv_qem_kernel_zArg_ttab[3];
extern ORV_API const float orv_qem_kernel_zArg_ctab[3];
ORV_API void _qemzArg_50(int32_t n, const QemComplexDouble* a, double* r);
ORV_API void _qemzArg_HA(int32_t n, const QemComplexDouble* a, double* r);
ORV_API void _qemzArg(int32_t n, const QemComplexDouble* a, double* r);
ORV_API void _qemzArg_26(int32_t n, const QemComplexDouble* a, double* r);
ORV_API void orv_qem_kernel_zArg_W7LAynn(int32_t n, const QemComplexDouble* a, double* r);
ORV_API void orv_qem_kernel_zArg_W7HAynn(int32_t n, const QemComplexDouble* a, double* r);

/** zAsin: arc sine; cuts from -inf to -1 and from 1 to inf; complex double.
 *  Largest error: LA 0.503, HA 0.503, EP 0.503 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_z orv_qem_kernel_zAsin_ttab[3];
extern ORV_API const float orv_qem_kernel_zAsin_ctab[3];
ORV_API void _qemzAsin_50(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzAsin_HA(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzAsin(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzAsin_26(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zAsin_PXHAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);

/** zAsinh: inverse hyperbolic sine; cuts along the imaginary axis beyond i and -i; complex double.
 *  Largest error: LA 0.503, HA 0.503, EP 0.503 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_z orv_qem_kernel_zAsinh_ttab[3];
extern ORV_API const float orv_qem_kernel_zAsinh_ctab[3];
ORV_API void _qemzAsinh_50(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzAsinh_HA(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzAsinh(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzAsinh_26(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zAsinh_PXHAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);

/** zAtan: arc tangent; cuts along the imaginary axis beyond i and -i; complex double.
 *  Largest error: LA 0.502, HA 0.502, EP 0.502 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_z orv_qem_kernel_zAtan_ttab[3];
extern ORV_API const float orv_qem_kernel_zAtan_ctab[3];
ORV_API void _qemzAtan_50(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzAtan_HA(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzAtan(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzAtan_26(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zAtan_PXHAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);

/** zAtanh: inverse hyperbolic tangent; cuts from -inf to -1 and from 1 to inf; complex double.
 *  Largest error: LA 0.502, HA 0.502, EP 0.502 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_z orv_qem_kernel_zAtanh_ttab[3];
extern ORV_API const float orv_qem_kernel_zAtanh_ctab[3];
ORV_API void _qemzAtanh_50(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzAtanh_HA(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzAtanh(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzAtanh_26(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zAtanh_PXHAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);

/** zCIS: cos(x) + i sin(x) of a real x; complex double.
 *  Largest error: LA 0.507, HA 0.507, EP 0.507 ulp.
 *  Status codes: 1 infinite argument. */
extern ORV_API const QemRealToComplex_z orv_qem_kernel_zCIS_ttab[3];
extern ORV_API const float orv_qem_kernel_zCIS_ctab[3];
ORV_API void _qemzCIS_50(int32_t n, const double* a, QemComplexDouble* r);
ORV_API void _qemzCIS_HA(int32_t n, const double* a, QemComplexDouble* r);
ORV_API void _qemzCIS(int32_t n, const double* a, QemComplexDouble* r);
ORV_API void _qemzCIS_26(int32_t n, const double* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zCIS_W7HAynn(int32_t n, const double* a, QemComplexDouble* r);

/** zConj: complex conjugate, an exact bit operation; complex double.
 *  Status codes: none. */
extern ORV_API const QemUnary_z orv_qem_kernel_zConj_ttab[3];
extern ORV_API const float orv_qem_kernel_zConj_ctab[3];
ORV_API void _qemzConj_50(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzConj_HA(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzConj(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzConj_26(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zConj_W7HAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);

/** zCos: complex cosine; complex double.
 *  Largest error: LA 0.503, HA 0.503, EP 0.503 ulp.
 *  Status codes: 3 overflow of a finite argument. */
extern ORV_API const QemUnary_z orv_qem_kernel_zCos_ttab[3];
extern ORV_API const float orv_qem_kernel_zCos_ctab[3];
ORV_API void _qemzCos_50(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzCos_HA(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzCos(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzCos_26(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zCos_PXHAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);

/** zCosh: complex hyperbolic cosine; complex double.
 *  Largest error: LA 0.503, HA 0.503, EP 0.503 ulp.
 *  Status codes: 3 overflow of a finite argument. */
extern ORV_API const QemUnary_z orv_qem_kernel_zCosh_ttab[3];
extern ORV_API const float orv_qem_kernel_zCosh_ctab[3];
ORV_API void _qemzCosh_50(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzCosh_HA(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzCosh(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzCosh_26(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zCosh_PXHAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);

/** zDiv: complex quotient; of zero divisors and infinities as C99, annex G, tells; complex double.
 *  Largest error: LA 0.503, HA 0.503, EP 2.23 ulp.
 *  Status codes: 3 overflow of finite arguments without a zero part, not at EP. */
extern ORV_API const QemBinary_z orv_qem_kernel_zDiv_ttab[3];
extern ORV_API const float orv_qem_kernel_zDiv_ctab[3];
ORV_API void _qemzDiv_50(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void _qemzDiv_HA(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void _qemzDiv(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void _qemzDiv_26(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zDiv_W7HAynn(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zDiv_W7EPnnn(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);

/** zExp: complex exponential; complex double.
 *  Largest error: LA 0.525, HA 0.525, EP 0.525 ulp.
 *  Status codes: 3 overflow of a finite argument. */
extern ORV_API const QemUnary_z orv_qem_kernel_zExp_ttab[3];
extern ORV_API const float orv_qem_kernel_zExp_ctab[3];
ORV_API void _qemzExp_50(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzExp_HA(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzExp(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzExp_26(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zExp_W7HAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);

/** zLn: complex natural logarithm; cut from -inf to 0; complex double.
 *  Largest error: LA 2.27, HA 0.55, EP 9.5e+07 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_z orv_qem_kernel_zLn_ttab[3];
extern ORV_API const float orv_qem_kernel_zLn_ctab[3];
ORV_API void _qemzLn_50(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzLn_HA(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzLn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzLn_26(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zLn_W7LAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zLn_V8HAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zLn_W7EPnnn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);

/** zLog10: complex decimal logarithm; cut from -inf to 0; complex double.
 *  Largest error: LA 0.506, HA 0.506, EP 0.506 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_z orv_qem_kernel_zLog10_ttab[3];
extern ORV_API const float orv_qem_kernel_zLog10_ctab[3];
ORV_API void _qemzLog10_50(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzLog10_HA(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzLog10(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzLog10_26(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zLog10_PXHAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);

/** zMul: complex product; complex double.
 *  Largest error: LA 0.501, HA 0.501, EP 1.0 ulp.
 *  Status codes: 3 overflow of finite arguments without a zero part, not at EP. */
extern ORV_API const QemBinary_z orv_qem_kernel_zMul_ttab[3];
extern ORV_API const float orv_qem_kernel_zMul_ctab[3];
ORV_API void _qemzMul_50(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void _qemzMul_HA(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void _qemzMul(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void _qemzMul_26(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zMul_W7HAynn(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zMul_W7EPnnn(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);

/** zMulByConj: a times the conjugate of b; complex double.
 *  Largest error: LA 0.501, HA 0.501, EP 1.0 ulp.
 *  Status codes: 3 overflow of finite arguments without a zero part, not at EP. */
extern ORV_API const QemBinary_z orv_qem_kernel_zMulByConj_ttab[3];
extern ORV_API const float orv_qem_kernel_zMulByConj_ctab[3];
ORV_API void _qemzMulByConj_50(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void _qemzMulByConj_HA(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void _qemzMulByConj(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void _qemzMulByConj_26(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zMulByConj_W7HAynn(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zMulByConj_W7EPnnn(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);

/** zPow: a^b as e^(b ln a), 0 and infinities by what these make of them; complex double.
 *  Largest error: LA 0.71, HA 0.71, EP 0.71 ulp.
 *  Status codes: 3 overflow of finite arguments. */
extern ORV_API const QemBinary_z orv_qem_kernel_zPow_ttab[3];
extern ORV_API const float orv_qem_kernel_zPow_ctab[3];
ORV_API void _qemzPow_50(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void _qemzPow_HA(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void _qemzPow(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void _qemzPow_26(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zPow_PXHAynn(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);

/** zPowx: a^b as Pow, one b for all elements; complex double.
 *  Largest error: LA 0.71, HA 0.71, EP 0.71 ulp.
 *  Status codes: 3 overflow of finite arguments. */
extern ORV_API const QemScalarSecond_z orv_qem_kernel_zPowx_ttab[3];
extern ORV_API const float orv_qem_kernel_zPowx_ctab[3];
ORV_API void _qemzPowx_50(int32_t n, const QemComplexDouble* a, QemComplexDouble b, QemComplexDouble* r);
ORV_API void _qemzPowx_HA(int32_t n, const QemComplexDouble* a, QemComplexDouble b, QemComplexDouble* r);
ORV_API void _qemzPowx(int32_t n, const QemComplexDouble* a, QemComplexDouble b, QemComplexDouble* r);
ORV_API void _qemzPowx_26(int32_t n, const QemComplexDouble* a, QemComplexDouble b, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zPowx_PXHAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble b, QemComplexDouble* r);

/** zSin: complex sine; complex double.
 *  Largest error: LA 0.503, HA 0.503, EP 0.503 ulp.
 *  Status codes: 3 overflow of a finite argument. */
extern ORV_API const QemUnary_z orv_qem_kernel_zSin_ttab[3];
extern ORV_API const float orv_qem_kernel_zSin_ctab[3];
ORV_API void _qemzSin_50(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzSin_HA(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzSin(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzSin_26(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zSin_PXHAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);

/** zSinh: complex hyperbolic sine; complex double.
 *  Largest error: LA 0.503, HA 0.503, EP 0.503 ulp.
 *  Status codes: 3 overflow of a finite argument. */
extern ORV_API const QemUnary_z orv_qem_kernel_zSinh_ttab[3];
extern ORV_API const float orv_qem_kernel_zSinh_ctab[3];
ORV_API void _qemzSinh_50(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzSinh_HA(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzSinh(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzSinh_26(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zSinh_PXHAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);

/** zSqrt: complex square root, Re not negative; cut from -inf to 0; complex double.
 *  Largest error: LA 0.501, HA 0.501, EP 0.501 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_z orv_qem_kernel_zSqrt_ttab[3];
extern ORV_API const float orv_qem_kernel_zSqrt_ctab[3];
ORV_API void _qemzSqrt_50(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzSqrt_HA(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzSqrt(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzSqrt_26(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zSqrt_V8HAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);

/** zSub: complex difference; complex double.
 *  Status codes: 3 overflow of finite arguments without a zero part. */
extern ORV_API const QemBinary_z orv_qem_kernel_zSub_ttab[3];
extern ORV_API const float orv_qem_kernel_zSub_ctab[3];
ORV_API void _qemzSub_50(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void _qemzSub_HA(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void _qemzSub(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void _qemzSub_26(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zSub_W7HAynn(int32_t n, const QemComplexDouble* a, const QemComplexDouble* b, QemComplexDouble* r);

/** zTan: complex tangent; complex double.
 *  Largest error: LA 0.503, HA 0.503, EP 0.503 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_z orv_qem_kernel_zTan_ttab[3];
extern ORV_API const float orv_qem_kernel_zTan_ctab[3];
ORV_API void _qemzTan_50(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzTan_HA(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzTan(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzTan_26(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zTan_PXHAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);

/** zTanh: complex hyperbolic tangent; complex double.
 *  Largest error: LA 0.503, HA 0.503, EP 0.503 ulp.
 *  Status codes: none. */
extern ORV_API const QemUnary_z orv_qem_kernel_zTanh_ttab[3];
extern ORV_API const float orv_qem_kernel_zTanh_ctab[3];
ORV_API void _qemzTanh_50(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzTanh_HA(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzTanh(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzTanh_26(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zTanh_PXHAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);

#ifdef __cplusplus
}
#endif

#endif
