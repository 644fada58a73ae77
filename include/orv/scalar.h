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
 * of floats below 0.5001). */
ORV_API double __zokdLn(double x);
ORV_API float __zoksLn(float x);

/** Square root, correctly rounded. */
ORV_API double __zokdSqrt(double x);

/** Largest whole number that is not above x; -0 stays -0. */
ORV_API double __zokdFloor(double x);

/** Logarithm of |gamma(x)|; infinity at 0 and at negative whole numbers. Errors below 0.51 ulp
 * where x is positive, beside the zeros at 1 and 2 as elsewhere, and where it is negative and the
 * result not near 0: beside a zero there, within 10^-18 times the size of x ln|x|. */
ORV_API double __zokdLGamma(double x);
/** The same, and the sign of gamma(x): -1 or, also where there is none, 1; that of x where it is 0.
 */
ORV_API double _zok_px_lgamma(double x, int32_t* sign);

/** The chi-square distribution of k degrees of freedom: probability below x, density at x. 0 where
 * k or x is not above 0. Errors of the probability are below 2 ulp, however small it is: a series
 * below the mean, Legendre's fraction above it, N. M. Temme's expansion (1979) for k beyond 2 10^8.
 * The density takes ln 2 as 0.6931471805999999: it is 2.0e-11 k too small, relatively, with an
 * error of 1 ulp beside. */
ORV_API double __zokdChi2CDF(double k, double x);
ORV_API double __zokdChi2PDF(double k, double x);
/** Its quantile: x with probability p below it; infinity for p = 1, NaN where k is not above 0 and
 *  finite or p not from 0 to 1. The error, in ulps, is below 1 and what half an ulp of p makes. */
ORV_API double __zokdChi2ICDF(double k, double p);

/** Inverts a covariance matrix of p variables in place, its upper triangle in columns of p: no
 * other element is written, nor read. Up to three variables in closed form, where a singular matrix
 * gives infinities; more by its Cholesky factor (LAPACK, whose last bits depend on the processor).
 * Returns 0, SS_NOT_POSITIVE_DEFINITE if it has none: then the matrix has been released by
 *  orv_serv_deallocate; or SS_SINGULAR. */
ORV_API int32_t __zokdInvCov(int32_t p, double* c);
ORV_API int32_t __zoksInvCov(int32_t p, float* c);

/** Makes a covariance matrix of p variables, full, positive definite if it nearly is: where the
 *  smallest eigenvalue is not above 0, a hundredth of the first of the others that is, is added to
 *  the diagonal. A lower triangle that differs from the upper one is made from it. Returns 0,
 *  SS_NO_POSITIVE_EIGENVALUE if there is none, SS_NO_MEMORY or SS_EIGENVALUES_FAILED (orv/ss.h). */
ORV_API int32_t __zokdTestCovRank(int32_t p, double* c);
ORV_API int32_t __zoksTestCovRank(int32_t p, float* c);

#ifdef __cplusplus
}
#endif

#endif
