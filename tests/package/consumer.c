/* SPDX-License-Identifier: MIT */
/* An application, valid as C11 and as C++20, of what the examples leave out: a call through a
 * table, the allocator, the version. */
#include <math.h>
#include <orv/qem.h>
#include <orv/serv.h>
#include <orv/threads.h>
#include <orv/version.h>
#include <stdio.h>
#include <string.h>

#if ORV_VERSION_NUMBER < 100
#error "no release is older than 0.1.0"
#endif

int main(void) {
  const double x = 1;
  double* y = (double*)orv_serv_allocate(sizeof *y, 64);
  if (y == 0) return 1;
  orv_qem_kernel_dExp_ttab[orv_qem_kernel_GetTTableIndex()](1, &x, y);
  const double e = *y;
  orv_serv_deallocate(y);
  orv_threads_set_count(2);
  const int threads = orv_threads_pool()->max_threads();
  printf("version %s, e %.17g, %d threads\n", orv_version(), e, threads);
  return strcmp(orv_version(), ORV_VERSION) != 0 || fabs(e - exp(x)) > 1e-15 || threads != 2;
}
