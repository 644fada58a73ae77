/* SPDX-License-Identifier: MIT */
/* Functions of one number, and of small covariance matrices, that random numbers and statistics
 * share. None keeps anything: all may run on any number of threads at once. Their results are the
 * same bits on every processor and in both word sizes where not said otherwise. */
#ifndef ORV_SCALAR_H
#define ORV_SCALAR_H

#include <stdint.h>

#ifndef ORV_API
#define ORV_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** Natural logarithm; -infinity at 0, NaN below. Errors below 0.51 ulp, denormals included (those
 *  of floats below 0.5001). */
ORV_API double __zokdLn(double x);
ORV_API float __zoksLn(float x);

/** Square root, correctly rounded. */
ORV_API double __zokdSqrt(double x);

/** Largest whole number that is not above x; -0 stays -0. */
ORV_API double __zokdFloor(double x);

/** Logarithm of |gamma(x)|; infinity at 0 and at negative whole numbers. Errors below 0.51 ulp,
 *  also beside the zeros at 1 and 2; beside a zero below -2, within 10^-18 |x| ln|x|. */
ORV_API double __zokdLGamma(double x);
/** The same, and the sign of gamma(x): that of x where it is 0, and 1 where there is none. */
ORV_API double _zok_px_lgamma(double x, int32_t* sign);

/** The chi-square distribution of k degrees of freedom: probability below x, density at x; 0
 *  where k or x is not above 0. A series below the mean, Legendre's fraction above it and N. M.
 *  Temme's expansion (1979) for k from 2 10^8 give the probability with an error below 1 ulp, or
 *  4 ulp where it is below 10^-60. The density takes 0.6931471805999999 for ln 2, which makes it
 *  2.0e-11 k too small, relatively; else its error is below 1 ulp for k up to 100. */
ORV_API double __zokdChi2CDF(double k, double x);
ORV_API double __zokdChi2PDF(double k, double x);
/** Its quantile: x with probability p below it, with an error below 1 ulp; infinity for p = 1,
 *  NaN where k is not above 0 and finite or p not from 0 to 1. */
ORV_API double __zokdChi2ICDF(double k, double p);

/** Inverts a covariance matrix of p variables in place: its upper triangle, stored by columns; no
 *  other element is read or written. Up to three variables it is a closed form, and a singular
 *  matrix gives infinities; from four on the Cholesky factor leads there (LAPACK, whose last bits
 *  depend on the processor). Returns 0, SS_SINGULAR, or SS_NOT_POSITIVE_DEFINITE where there is
 *  no factor: then the matrix has been released by orv_serv_deallocate. */
ORV_API int32_t __zokdInvCov(int32_t p, double* c);
ORV_API int32_t __zoksInvCov(int32_t p, float* c);

/** Makes a covariance matrix of p variables, stored in full, positive definite if it nearly is.
 *  Where a pivot of its Cholesky factor is not above 10 p epsilon times its diagonal element, and
 *  so may be rounding alone, a hundredth of an eigenvalue goes onto the diagonal: the first of all
 *  but the smallest that is p epsilon times the largest or more. A matrix that is left as it is has
 *  an inverse. From two variables on, the lower triangle is made from the upper one.
 *  Returns 0, SS_NO_POSITIVE_EIGENVALUE, SS_NO_MEMORY or SS_EIGENVALUES_FAILED (orv/ss.h). */
ORV_API int32_t __zokdTestCovRank(int32_t p, double* c);
ORV_API int32_t __zoksTestCovRank(int32_t p, float* c);

#ifdef __cplusplus
}
#endif

#endif
