/* A small application, valid as C11 and as C++20: a vector call, its error report, the allocator,
 * threads, the version. */
#include <math.h>
#include <orv/qem.h>
#include <orv/serv.h>
#include <orv/threads.h>
#include <orv/version.h>
#include <stdio.h>
#include <string.h>

static int32_t seen_index = -1;

static int32_t on_error(QemErrorContext* context) {
  seen_index = context->index;
  context->res1 = 42;
  return 0;
}

static int failures = 0;

static void expect(int condition, const char* what) {
  if (condition) return;
  fprintf(stderr, "failed: %s\n", what);
  ++failures;
}

int main(void) {
  const double x[] = {1, 1000};
  double* y = (double*)orv_serv_allocate(sizeof x, 64);
  if (y == 0) return 1;

  orv_qem_kernel_SetErrorCallBack(on_error);
  _qemdExp(2, x, y);
  expect(fabs(y[0] - exp(1.0)) <= 1e-15 * y[0], "e^x agrees with the C library");
  expect(seen_index == 1, "the overflow is reported");
  expect(y[1] == 42, "the callback's result is stored");
  expect(orv_qem_kernel_GetErrStatus() == QEM_STATUS_OVERFLOW, "the status is kept");

  y[0] = 0;
  orv_qem_kernel_dExp_ttab[orv_qem_kernel_GetTTableIndex()](1, x, y);
  expect(fabs(y[0] - exp(1.0)) <= 1e-15 * y[0], "a call through the table");
  orv_serv_deallocate(y);

  orv_threads_set_count(2);
  expect(orv_threads_pool()->max_threads() == 2, "threads as many as were asked for");
  expect(strcmp(orv_version(), ORV_VERSION) == 0, "headers and library of one version");
  return failures != 0;
}
