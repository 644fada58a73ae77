/* Made by tools/make_functions_header.py from the lists in qem/_bt_gen_ia32; do not edit.
 *
 * For each function: the table of its kernels and of their relative costs, in the order LA, HA, EP;
 * a stub for each level (the plain name is HA); and the kernels themselves, which carry the
 * instruction set they need in their name: G9 AVX, N8 and P8 SSE4.1, V8 SSE3, W7 SSE2.
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

/** sAbs: absolute value; float.
 *  Status codes: none. */
extern ORV_API const QemUnary_s orv_qem_kernel_sAbs_ttab[3];
extern ORV_API const float orv_qem_kernel_sAbs_ctab[3];
ORV_API void _qemsAbs_21(int32_t n, const float* a, float* r);
ORV_API void _qemsAbs_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsAbs(int32_t n, const float* a, float* r);
ORV_API void _qemsAbs_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sAbs_W7HAynn(int32_t n, const float* a, float* r);

/** sAdd: sum; under overlap as if element by element, ascending; float.
 *  Status codes: none. */
extern ORV_API const QemBinary_s orv_qem_kernel_sAdd_ttab[3];
extern ORV_API const float orv_qem_kernel_sAdd_ctab[3];
ORV_API void _qemsAdd_21(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsAdd_HA(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsAdd(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsAdd_11(int32_t n, const float* a, const float* b, float* r);
ORV_API void orv_qem_kernel_sAdd_G9HAynn(int32_t n, const float* a, const float* b, float* r);

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

/** sMul: product; under overlap as if element by element, ascending; float.
 *  Status codes: none. */
extern ORV_API const QemBinary_s orv_qem_kernel_sMul_ttab[3];
extern ORV_API const float orv_qem_kernel_sMul_ctab[3];
ORV_API void _qemsMul_21(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsMul_HA(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsMul(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsMul_11(int32_t n, const float* a, const float* b, float* r);
ORV_API void orv_qem_kernel_sMul_G9HAynn(int32_t n, const float* a, const float* b, float* r);

/** sSqr: square; under overlap as if element by element, ascending; float.
 *  Status codes: none. */
extern ORV_API const QemUnary_s orv_qem_kernel_sSqr_ttab[3];
extern ORV_API const float orv_qem_kernel_sSqr_ctab[3];
ORV_API void _qemsSqr_21(int32_t n, const float* a, float* r);
ORV_API void _qemsSqr_HA(int32_t n, const float* a, float* r);
ORV_API void _qemsSqr(int32_t n, const float* a, float* r);
ORV_API void _qemsSqr_11(int32_t n, const float* a, float* r);
ORV_API void orv_qem_kernel_sSqr_G9HAynn(int32_t n, const float* a, float* r);

/** sSub: difference; under overlap as if element by element, ascending; float.
 *  Status codes: none. */
extern ORV_API const QemBinary_s orv_qem_kernel_sSub_ttab[3];
extern ORV_API const float orv_qem_kernel_sSub_ctab[3];
ORV_API void _qemsSub_21(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsSub_HA(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsSub(int32_t n, const float* a, const float* b, float* r);
ORV_API void _qemsSub_11(int32_t n, const float* a, const float* b, float* r);
ORV_API void orv_qem_kernel_sSub_G9HAynn(int32_t n, const float* a, const float* b, float* r);

/** dAbs: absolute value; double.
 *  Status codes: none. */
extern ORV_API const QemUnary_d orv_qem_kernel_dAbs_ttab[3];
extern ORV_API const float orv_qem_kernel_dAbs_ctab[3];
ORV_API void _qemdAbs_50(int32_t n, const double* a, double* r);
ORV_API void _qemdAbs_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdAbs(int32_t n, const double* a, double* r);
ORV_API void _qemdAbs_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dAbs_N8HAynn(int32_t n, const double* a, double* r);

/** dAdd: sum; under overlap as if element by element, ascending; double.
 *  Status codes: none. */
extern ORV_API const QemBinary_d orv_qem_kernel_dAdd_ttab[3];
extern ORV_API const float orv_qem_kernel_dAdd_ctab[3];
ORV_API void _qemdAdd_50(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdAdd_HA(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdAdd(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdAdd_26(int32_t n, const double* a, const double* b, double* r);
ORV_API void orv_qem_kernel_dAdd_G9HAynn(int32_t n, const double* a, const double* b, double* r);

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

/** dMul: product; under overlap as if element by element, ascending; double.
 *  Status codes: none. */
extern ORV_API const QemBinary_d orv_qem_kernel_dMul_ttab[3];
extern ORV_API const float orv_qem_kernel_dMul_ctab[3];
ORV_API void _qemdMul_50(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdMul_HA(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdMul(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdMul_26(int32_t n, const double* a, const double* b, double* r);
ORV_API void orv_qem_kernel_dMul_G9HAynn(int32_t n, const double* a, const double* b, double* r);

/** dSqr: square; under overlap as if element by element, ascending; double.
 *  Status codes: none. */
extern ORV_API const QemUnary_d orv_qem_kernel_dSqr_ttab[3];
extern ORV_API const float orv_qem_kernel_dSqr_ctab[3];
ORV_API void _qemdSqr_50(int32_t n, const double* a, double* r);
ORV_API void _qemdSqr_HA(int32_t n, const double* a, double* r);
ORV_API void _qemdSqr(int32_t n, const double* a, double* r);
ORV_API void _qemdSqr_26(int32_t n, const double* a, double* r);
ORV_API void orv_qem_kernel_dSqr_G9HAynn(int32_t n, const double* a, double* r);

/** dSub: difference; under overlap as if element by element, ascending; double.
 *  Status codes: none. */
extern ORV_API const QemBinary_d orv_qem_kernel_dSub_ttab[3];
extern ORV_API const float orv_qem_kernel_dSub_ctab[3];
ORV_API void _qemdSub_50(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdSub_HA(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdSub(int32_t n, const double* a, const double* b, double* r);
ORV_API void _qemdSub_26(int32_t n, const double* a, const double* b, double* r);
ORV_API void orv_qem_kernel_dSub_G9HAynn(int32_t n, const double* a, const double* b, double* r);

/** cConj: complex conjugate, an exact bit operation; complex float.
 *  Status codes: none. */
extern ORV_API const QemUnary_c orv_qem_kernel_cConj_ttab[3];
extern ORV_API const float orv_qem_kernel_cConj_ctab[3];
ORV_API void _qemcConj_21(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcConj_HA(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcConj(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void _qemcConj_11(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cConj_W7HAynn(int32_t n, const QemComplexFloat* a, QemComplexFloat* r);

/** zConj: complex conjugate, an exact bit operation; complex double.
 *  Status codes: none. */
extern ORV_API const QemUnary_z orv_qem_kernel_zConj_ttab[3];
extern ORV_API const float orv_qem_kernel_zConj_ctab[3];
ORV_API void _qemzConj_50(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzConj_HA(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzConj(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void _qemzConj_26(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zConj_W7HAynn(int32_t n, const QemComplexDouble* a, QemComplexDouble* r);

#ifdef __cplusplus
}
#endif

#endif
