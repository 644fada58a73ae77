/* SPDX-License-Identifier: MIT */
/* Threads for summary statistics: ready tables of services, in a library of its own
 * (liborv_threads.so), since the kernels start no threads. */
#ifndef ORV_THREADS_H
#define ORV_THREADS_H

#include "orv/ss.h"

#ifdef __cplusplus
extern "C" {
#endif

/** The calling thread does everything. */
ORV_API const SSThreadServices* orv_threads_serial(void);

/** A pool of threads, which the calling thread joins. They are started when they are first needed
 *  and sleep between jobs. One job at a time uses the pool; another caller's job waits for its end,
 *  and a job from inside an item runs on the thread that it is on. */
ORV_API const SSThreadServices* orv_threads_pool(void);

/** The same pool, for results that don't depend on how many threads it has: work is always cut into
 *  shares for 32 threads, as far as there is so much of it, and those that there are take them in
 *  turn. With the other tables the last bits of moments and covariances change with the number of
 *  threads. Costs room for the sums of 32 threads. */
ORV_API const SSThreadServices* orv_threads_reproducible(void);

/** Sets how many threads the pool offers, the calling one included. 0 or less: the environment's
 *  ORV_NUM_THREADS or else the number of processors that this process may use, as at the start.
 *  Takes effect with the next job. */
ORV_API void orv_threads_set_count(int32_t count);

#ifdef __cplusplus
}
#endif

#endif
