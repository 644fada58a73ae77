/* A small application, valid as C11 and as C++20: a vector call, its error report, the allocator,
 * a mean over threads. */
#include <math.h>
#include <orv/qem.h>
#include <orv/serv.h>
#include <orv/ss.h>
#include <orv/threads.h>
#include <stdio.h>

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

static void expect_mean(void) {
  enum { n = 5000 };
  static double x[n], mean;
  const int32_t p = 1, rows = n, layout = SS_ROWS;
  SSTask* task;
  for (int i = 0; i < n; ++i) x[i] = i % 5;
  orv_threads_set_count(2);
  expect(__zokdSSNewTask(&task, &p, &rows, &layout, x, 0, 0, 0) == SS_OK, "a new task");
  __zokdSSEditTask(task, SS_PARAM_MEAN, &mean);
  expect(_zokdSSBasic(task, SS_EST_MEAN, SS_METHOD_FAST, orv_threads_pool()) == SS_OK, "a mean");
  expect(fabs(mean - 2) <= 1e-14, "the mean's value");
  __zokSSDeleteTask(&task);
}

int main(void) {
  enum { n = 5 };
  const double x[n] = {0, 1, -1, 1000, 0.5};
  double* y = (double*)orv_serv_allocate(n * sizeof *y, 64);
  expect(y != 0, "allocation");
  if (y == 0) return 1;

  orv_qem_kernel_SetErrorCallBack(on_error);
  _qemdExp(n, x, y);
  for (int i = 0; i < n; ++i) {
    if (i == 3) continue;
    expect(fabs(y[i] - exp(x[i])) <= 1e-15 * y[i], "e^x agrees with the C library");
  }
  expect(seen_index == 3, "the overflow is reported");
  expect(y[3] == 42, "the callback's result is stored");
  expect(orv_qem_kernel_GetErrStatus() == QEM_STATUS_OVERFLOW, "the status is kept");

  orv_qem_kernel_dExp_ttab[orv_qem_kernel_GetTTableIndex()](1, x + 1, y);
  expect(fabs(y[0] - exp(1.0)) <= 1e-15 * y[0], "a call through the table");

  orv_serv_deallocate(y);
  expect_mean();
  return failures != 0;
}
