/* SPDX-License-Identifier: MIT */
/* Vector math: mode, status, error reports, and the shapes of the kernels.
 *
 * A vector function exists at three accuracy levels. Each level is a kernel of its own, reached
 * through the function's table or through a stub that fixes the level:
 *
 *     _qemdExp_HA(n, a, r);                                            high accuracy
 *     orv_qem_kernel_dExp_ttab[orv_qem_kernel_GetTTableIndex()](n, a, r);   the mode's level
 *
 * Kernels never fail as a whole: each element is independent, a special element is reported through
 * the routes of the mode word, and the call goes on. All state is per thread.
 *
 * The functions themselves are declared in orv/qem_functions.h. */
#ifndef ORV_QEM_H
#define ORV_QEM_H

#include <stdint.h>

#ifndef ORV_API
#define ORV_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** Elements of the complex types: real part, then imaginary part. */
typedef struct {
  float re, im;
} QemComplexFloat;
typedef struct {
  double re, im;
} QemComplexDouble;

/* ---- Mode word ------------------------------------------------------------------------------ */

/** The per-thread mode word. Bits 0 to 3 choose the accuracy, bits 4 to 5 carry a precision
 * request, bits 8 to 15 choose error routes, bits 18 to 21 the treatment of denormals. */
typedef uint32_t QemMode;

enum {
  /* accuracy */
  QEM_LA = 0x1, /**< low accuracy: below 4 ulp */
  QEM_HA = 0x2, /**< high accuracy: below 1 ulp */
  QEM_EP = 0x3, /**< enhanced performance: about half the bits */
  /* precision request; carried for layers above, set by the environment only */
  QEM_FLOAT_CONSISTENT = 0x10,
  QEM_DOUBLE_CONSISTENT = 0x20,
  QEM_RESTORE = 0x30,
  /* error routes, may be combined */
  QEM_ERRMODE_IGNORE = 0x100,    /**< alone: nothing happens but the status */
  QEM_ERRMODE_ERRNO = 0x200,     /**< errno is set */
  QEM_ERRMODE_STDERR = 0x400,    /**< a message is written to standard error */
  QEM_ERRMODE_EXCEPT = 0x800,    /**< a floating-point exception is raised */
  QEM_ERRMODE_CALLBACK = 0x1000, /**< the thread's callback is called */
  QEM_ERRMODE_DEFAULT = 0x1A00,
  /* denormals */
  DENORMALS_KEPT = 0x140000,
  DENORMALS_FLUSHED = 0x280000,
  /* the word of a thread whose environment says nothing */
  QEM_MODE_DEFAULT = 0x1A02,
  /* fields */
  QEM_ACCURACY_MASK = 0xF,
  QEM_ERRMODE_MASK = 0xFF00,
  QEM_DENORMALS_MASK = 0x3C0000
};

/** Returns the thread's mode word. On first use in a thread it is taken from the environment
 * variable ORV_QEM_MODE, a list of tokens such as "QEM_LA,QEM_ERRMODE_STDERR"; a list with any
 * fault is passed over whole, and the word is QEM_MODE_DEFAULT. */
ORV_API QemMode orv_qem_kernel_GetMode(void);
ORV_API QemMode _qemGetMode(void);

/** Replaces the accuracy, the error routes and the denormal control by those fields of `mode` that
 *  are not 0; a field that is 0 keeps its value. Returns the word before the change. */
ORV_API QemMode orv_qem_kernel_SetMode(QemMode mode);
ORV_API QemMode _qemSetMode(QemMode mode);

/** Parses ORV_QEM_MODE: the OR of its tokens' values, or -1 if it is absent or malformed. */
ORV_API int64_t orv_qem_kernel_ReadEnvVarMode(void);

/** Slot of a kernel table for the thread's accuracy: 0 LA, 1 HA, 2 EP (-1 if none is chosen). */
ORV_API int32_t orv_qem_kernel_GetTTableIndex(void);

/** Slot of a kernel table for the accuracy of `mode`. The first argument is not used. */
ORV_API int32_t orv_qem_kernel_GetTTableIndexM(int32_t unused, QemMode mode);

/* ---- Status and error reports --------------------------------------------------------------- */

/** Status codes. Kernels report 1 to 4; layers above may report the negative ones. */
enum {
  QEM_STATUS_OK = 0,
  QEM_STATUS_BAD_ARGUMENT = -1,
  QEM_STATUS_BAD_POINTER = -2,
  QEM_STATUS_DOMAIN = 1,      /**< outside the domain, the result is NaN */
  QEM_STATUS_SINGULARITY = 2, /**< a pole, the result is infinite */
  QEM_STATUS_OVERFLOW = 3,
  QEM_STATUS_UNDERFLOW = 4
};

/** Status of the last element reported in this thread; a call without errors leaves it alone. */
ORV_API int32_t orv_qem_kernel_GetErrStatus(void);
ORV_API int32_t _qemGetErrStatus(void);

/** Stores a status and returns the previous one. */
ORV_API int32_t orv_qem_kernel_SetErrStatus(int32_t status);
ORV_API int32_t _qemSetErrStatus(int32_t status);

/** Stores 0 and returns the previous status. */
ORV_API int32_t orv_qem_kernel_ClearErrStatus(void);
ORV_API int32_t _qemClearErrStatus(void);

/** One reported element, as the callback sees it. Packed to 4 bytes in every build. The fields
 *  arg1 to res2 are filled for codes other than -1 and -2, the _im fields for complex functions. */
#pragma pack(push, 4)
typedef struct QemErrorContext {
  int32_t code;
  int32_t index; /**< in the user's whole vector, see SetInterfInputVectorPointer */
  double arg1;
  double arg2; /**< kernels give the first argument here, too */
  double res1; /**< may be changed; the last word on a single result */
  double res2; /**< may be changed */
  char func_name[64];
  int32_t func_name_len;
  double arg1_im;
  double arg2_im;
  double res1_im;
  double res2_im;
} QemErrorContext;
#pragma pack(pop)

/** Called for each reported element when the mode has QEM_ERRMODE_CALLBACK. Returns 0 to let the
 *  other routes run and the record's results be stored, nonzero if the element is dealt with.
 *
 *  It runs in the middle of a kernel, under the kernel's control words: rounding to nearest,
 * denormals as the mode says. It has to return: after a longjmp or a C++ exception out of it these
 * words stay as they are, and of the vector nothing is promised. It may not call a kernel with the
 * same output vector. Where the output is also an input, arg1 (or arg2) may already be the result.
 */
typedef int32_t (*QemErrorCallBack)(QemErrorContext* context);

ORV_API QemErrorCallBack orv_qem_kernel_GetErrorCallBack(void);
ORV_API QemErrorCallBack _qemGetErrorCallBack(void);

/** Stores the thread's callback (0 for none), sets or clears QEM_ERRMODE_CALLBACK in the mode, and
 *  returns the previous callback. If that bit is the only error route it cannot be cleared. */
ORV_API QemErrorCallBack orv_qem_kernel_SetErrorCallBack(QemErrorCallBack callback);
ORV_API QemErrorCallBack _qemSetErrorCallBack(QemErrorCallBack callback);

/** SetErrorCallBack(0). */
ORV_API QemErrorCallBack orv_qem_kernel_ClearErrorCallBack(void);
ORV_API QemErrorCallBack _qemClearErrorCallBack(void);

/** Stores the base of the user's first input vector, for a caller that hands a kernel a slice of
 * it: reported indices then count from the base. 0 ends that. Returns `base`. */
ORV_API const void* orv_qem_kernel_SetInterfInputVectorPointer(const void* base);
ORV_API const void* _qemSetInterfInputVectorPointer(const void* base);

/** Reports element `index` of a call: stores the status, then runs the routes of the mode on a
 *  record of a[index], b[index], r1[index], r2[index], and stores the record's results. */
ORV_API void orv_qem_kernel_sError(int32_t code, int32_t index, const float* a, const float* b,
                                   float* r1, float* r2, const char* name);
ORV_API void orv_qem_kernel_dError(int32_t code, int32_t index, const double* a, const double* b,
                                   double* r1, double* r2, const char* name);
ORV_API void orv_qem_kernel_cError(int32_t code, int32_t index, const QemComplexFloat* a,
                                   const QemComplexFloat* b, QemComplexFloat* r1,
                                   QemComplexFloat* r2, const char* name);
ORV_API void orv_qem_kernel_zError(int32_t code, int32_t index, const QemComplexDouble* a,
                                   const QemComplexDouble* b, QemComplexDouble* r1,
                                   QemComplexDouble* r2, const char* name);

/** Always 0: this library is one processor's build and chooses nothing at run time. */
ORV_API int32_t dll_cpu_version(void);

/* ---- Scalar routines ------------------------------------------------------------------------ */

/** Sine and cosine of element `i` of a vector, into r1[i] and r2[i]; below 1 ulp whatever the
 *  argument. An infinite one gives NaN and is reported with code 1 and the routine's own name, which
 *  is all that the three levels differ in. The caller's control words don't matter. */
ORV_API void orv_qem_kernel_sSinCos_SC_HA(int32_t i, const float* a, float* r1, float* r2);
ORV_API void orv_qem_kernel_sSinCos_SC_LA(int32_t i, const float* a, float* r1, float* r2);
ORV_API void orv_qem_kernel_sSinCos_SC_A11(int32_t i, const float* a, float* r1, float* r2);
ORV_API void orv_qem_kernel_dSinCos_SC_HA(int32_t i, const double* a, double* r1, double* r2);
ORV_API void orv_qem_kernel_dSinCos_SC_LA(int32_t i, const double* a, double* r1, double* r2);
ORV_API void orv_qem_kernel_dSinCos_SC_A11(int32_t i, const double* a, double* r1, double* r2);

/** The same as a complex number, cosine and sine. Complex floats report under the name of doubles. */
ORV_API void orv_qem_kernel_cCIS_SC_HA(int32_t i, const float* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cCIS_SC_LA(int32_t i, const float* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_cCIS_SC_A11(int32_t i, const float* a, QemComplexFloat* r);
ORV_API void orv_qem_kernel_zCIS_SC_HA(int32_t i, const double* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zCIS_SC_LA(int32_t i, const double* a, QemComplexDouble* r);
ORV_API void orv_qem_kernel_zCIS_SC_A11(int32_t i, const double* a, QemComplexDouble* r);

/** CdfNormInv and ErfcInv of one element, *a, into *r, below 1 ulp. They return the status code that
 *  the vector functions report, and report nothing. */
ORV_API int32_t dCdfNormInv_SC(const double* a, double* r);
ORV_API int32_t dErfcInv_SC(const double* a, double* r);
ORV_API int32_t sCdfNormInv_SC(const float* a, float* r);
ORV_API int32_t sErfcInv_SC(const float* a, float* r);

/** The same of an x strictly within the domain, 0 to 1 and 0 to 2. */
ORV_API double dCdfNormInv_Tail(double x);
ORV_API double dErfcInv_Tail(double x);

/** Takes whole quarter turns out of a finite x of 2^16 or more: what is left, within pi/4, goes to
 *  out[0] and what that lacks to out[1]. Returns the quarter turns modulo 4 (M. Payne and R. Hanek,
 *  1983). */
ORV_API int32_t orv_qem_kernel_reduce_pio2d(double x, double* out);

/* ---- Scalar complex routines ---------------------------------------------------------------- */

/** A complex function of one element, as the kernels that have no lanes call it: computed in extended
 *  arithmetic, each part rounded once. Nothing is reported. The x87 unit must be at extended precision,
 *  which is how a program starts. Special arguments give what C99, annex G, tells. */
ORV_API void orv_qem_kernel_cacos_scalar(QemComplexDouble* r, double re, double im);
ORV_API void orv_qem_kernel_cacosh_scalar(QemComplexDouble* r, double re, double im);
ORV_API void orv_qem_kernel_casin_scalar(QemComplexDouble* r, double re, double im);
ORV_API void orv_qem_kernel_casinh_scalar(QemComplexDouble* r, double re, double im);
ORV_API void orv_qem_kernel_catan_scalar(QemComplexDouble* r, double re, double im);
ORV_API void orv_qem_kernel_catanh_scalar(QemComplexDouble* r, double re, double im);
ORV_API void orv_qem_kernel_ccos_scalar(QemComplexDouble* r, double re, double im);
ORV_API void orv_qem_kernel_ccosh_scalar(QemComplexDouble* r, double re, double im);
ORV_API void orv_qem_kernel_cexp_scalar(QemComplexDouble* r, double re, double im);
ORV_API void orv_qem_kernel_clog_scalar(QemComplexDouble* r, double re, double im);
ORV_API void orv_qem_kernel_clog10_scalar(QemComplexDouble* r, double re, double im);
ORV_API void orv_qem_kernel_csin_scalar(QemComplexDouble* r, double re, double im);
ORV_API void orv_qem_kernel_csinh_scalar(QemComplexDouble* r, double re, double im);
ORV_API void orv_qem_kernel_csqrt_scalar(QemComplexDouble* r, double re, double im);
ORV_API void orv_qem_kernel_ctan_scalar(QemComplexDouble* r, double re, double im);
ORV_API void orv_qem_kernel_ctanh_scalar(QemComplexDouble* r, double re, double im);
/** x to the power y, e^(y ln x). Beyond |y ln x| of 2^10 the error grows with it. */
ORV_API void orv_qem_kernel_cpow_scalar(QemComplexDouble* r, double x_re, double x_im, double y_re,
                                        double y_im);

/** The same for floats. The result is both floats in one word, the real part in its low half. */
ORV_API uint64_t _qem_cacosf_scalar(float re, float im);
ORV_API uint64_t _qem_cacoshf_scalar(float re, float im);
ORV_API uint64_t _qem_casinf_scalar(float re, float im);
ORV_API uint64_t _qem_casinhf_scalar(float re, float im);
ORV_API uint64_t _qem_catanf_scalar(float re, float im);
ORV_API uint64_t _qem_catanhf_scalar(float re, float im);
ORV_API uint64_t _qem_ccosf_scalar(float re, float im);
ORV_API uint64_t _qem_ccoshf_scalar(float re, float im);
ORV_API uint64_t _qem_clog10f_scalar(float re, float im);
ORV_API uint64_t _qem_csinf_scalar(float re, float im);
ORV_API uint64_t _qem_csinhf_scalar(float re, float im);
ORV_API uint64_t _qem_csqrtf_scalar(float re, float im);
ORV_API uint64_t _qem_ctanf_scalar(float re, float im);
ORV_API uint64_t _qem_ctanhf_scalar(float re, float im);
ORV_API uint64_t _qem_cexpt_scalar(float re, float im);
ORV_API uint64_t _qem_cpowf_scalar(float x_re, float x_im, float y_re, float y_im);

/** Functions of an extended number, within four units of its last place; angles below 2^1040. */
ORV_API long double orv_qem_kernel_acoshl_scalar(long double x);
ORV_API long double orv_qem_kernel_acosl_scalar(long double x);
ORV_API long double orv_qem_kernel_asinhl_scalar(long double x);
ORV_API long double orv_qem_kernel_asinl_scalar(long double x);
ORV_API long double orv_qem_kernel_atanhl_scalar(long double x);
ORV_API long double orv_qem_kernel_atanl_scalar(long double x);
ORV_API long double orv_qem_kernel_coshl_scalar(long double x);
ORV_API long double orv_qem_kernel_cosl_scalar(long double x);
ORV_API long double orv_qem_kernel_expl_scalar(long double x);
ORV_API long double orv_qem_kernel_fabsl_scalar(long double x);
ORV_API long double orv_qem_kernel_log1pl_scalar(long double x);
ORV_API long double orv_qem_kernel_logl_scalar(long double x);
ORV_API long double orv_qem_kernel_sinhl_scalar(long double x);
ORV_API long double orv_qem_kernel_sinl_scalar(long double x);
ORV_API long double orv_qem_kernel_sqrtl_scalar(long double x);
ORV_API long double orv_qem_kernel_tanhl_scalar(long double x);
ORV_API long double orv_qem_kernel_tanl_scalar(long double x);
ORV_API long double orv_qem_kernel_atan2l_scalar(long double y, long double x);
ORV_API void orv_qem_kernel_sincosl_scalar(long double x, long double* sine, long double* cosine);
ORV_API void orv_qem_kernel_sinhcoshl_scalar(long double x, long double* sinh, long double* cosh);
/** |x|. */
ORV_API double orv_qem_kernel__dabs_scalar(double x);
ORV_API float orv_qem_kernel__sabs_scalar(float x);

/* ---- Exported tables ------------------------------------------------------------------------ */

/** Reciprocals, rounded to few bits, of the midpoints of [1 + i/256, 1 + (i + 1)/256). */
extern ORV_API const float orv_qem_core_rcp_table_256[256];
extern ORV_API const double orv_qem_core_double_rcp_table_256[256];
/** Low, then high part of -ln of those reciprocals. */
extern ORV_API const double orv_qem_core_log_table_256[256][2];
/** High, then low part of the same, split further up for extended arithmetic. */
extern ORV_API const double orv_qem_core_logl_table_256[256][2];
/** High, then low part of 2^((j - 128)/256). */
extern ORV_API const double orv_qem_core_expl_table_256[257][2];
/** High, then low part of the arctangent of j/128, j from 0 to 512. */
extern ORV_API const double orv_qem_core_atanl_table_128[513][2];

#ifdef __cplusplus
}
#endif

#ifndef ORV_QEM_WITHOUT_FUNCTIONS  // as the library's own units are compiled
#include <orv/qem_functions.h>
#endif

#endif
