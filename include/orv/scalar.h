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

#ifdef __cplusplus
}
#endif

#endif
