/* SPDX-License-Identifier: MIT */
/* Sorting and selection in place, for doubles and floats. Nothing is allocated or kept: every
 * function may run on any number of threads at once, on different data.
 *
 * Quicksort family: a comparison with NaN is false, so with NaNs in the data these still end and
 * only move elements about, but in no useful order. Sorts of n <= 1 do nothing. The order of -0 and
 * +0, which are equal, is left open. */
#ifndef ORV_SORT_H
#define ORV_SORT_H

#include <stddef.h>
#include <stdint.h>

#ifndef ORV_API
#define ORV_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** Sorts a[0 .. n) ascending. Quicksort (Hoare 1962) with the median of three as pivot and small
 *  parts left to insertion (Singleton 1969, Sedgewick 1978). */
ORV_API void __zokdQSort(int32_t n, double* a);
ORV_API void __zoksQSort(int32_t n, float* a);

/** The same for the n elements a[0], a[stride], a[2 stride], ... */
ORV_API void __zokdQSortStep(int32_t n, double* a, int32_t stride);
ORV_API void __zoksQSortStep(int32_t n, float* a, int32_t stride);

/** The element of rank k, 0 <= k < n, moved to a[k]; none before it is greater and none after it
 *  less (Hoare 1961). A rank outside reads outside. */
ORV_API double __zokdQSortSelect(int32_t n, double* a, int32_t k);
ORV_API float __zoksQSortSelect(int32_t n, float* a, int32_t k);

/** Statuses of the functions below. */
enum {
  SORT_OK = 0,
  SORT_BAD_LENGTH = -6,  /**< length below 1 */
  SORT_NULL_POINTER = -8 /**< looked for before the length */
};

/** Sorts data[0 .. len) ascending, stably; -0 comes before +0, NaNs by their bits: negative ones
 *  first, positive ones last. `work` has room for len elements and holds nothing useful afterwards.
 *  Radix sort from the least significant digit, of 10 or 11 bits (Knuth 1973, 5.2.5), on keys of
 *  the same order as the numbers. */
ORV_API int32_t p8_tebsSortRadixAscend_64f_I(double* data, double* work, int32_t len);
ORV_API int32_t p8_tebsSortRadixAscend_32f_I(float* data, float* work, int32_t len);

/** Copies len floats, fills len integers with 0. */
ORV_API int32_t p8_tebsCopy_32f(const float* src, float* dst, int32_t len);
ORV_API int32_t p8_tebsZero_32s(int32_t* dst, int32_t len);

/** The same for bytes, without a check. */
ORV_API void p8_ownsCopy_8u(const uint8_t* src, uint8_t* dst, size_t bytes);
ORV_API void p8_ownsZero_8u(uint8_t* dst, size_t bytes);

#ifdef __cplusplus
}
#endif

#endif
