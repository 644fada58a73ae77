/* SPDX-License-Identifier: MIT */
/* Summarises the columns of a table: mean, standard deviation, quartiles and correlation, with as
 * many threads as there are processors.
 *     summary examples/data/stackloss.csv */
#include <math.h>
#include <orv/ss.h>
#include <orv/threads.h>
#include <stdio.h>
#include <stdlib.h>

enum { p = 4, most_rows = 1000, quartiles = 3 };

static double x[most_rows][p], mean[p], cov[p][p], cor[p][p], quantiles[p][quartiles];

/* Reads rows of p numbers below a line of names. Returns their number. */
static int32_t read_rows(FILE* file) {
  char line[200];
  int32_t n = 0;
  if (fgets(line, sizeof line, file) == 0) return 0;
  printf("%s", line);
  while (n < most_rows && fgets(line, sizeof line, file) != 0) {
    char* cell = line;
    for (int j = 0; j < p; ++j) x[n][j] = strtod(cell + (j > 0), &cell);
    ++n;
  }
  return n;
}

/* Describes data and results to a task, and computes. Returns a status. */
static int32_t summarise(int32_t n) {
  const int32_t width = p, layout = SS_COLUMNS, full = SS_MATRIX_FULL, order_count = quartiles;
  const double orders[quartiles] = {0.25, 0.5, 0.75};
  const SSThreadServices* threads = orv_threads_pool();
  SSTask* task;
  int32_t status = __zokdSSNewTask(&task, &width, &n, &layout, x[0], 0, 0, 0);
  if (status != SS_OK) return status;
  __zokdSSEditCovCor(task, mean, cov[0], &full, cor[0], &full);
  __zokdSSEditQuantiles(task, &order_count, orders, quantiles[0], 0, 0);
  status = _zokdSSBasic(task, SS_EST_MEAN | SS_EST_COV | SS_EST_COR, SS_METHOD_ONE_PASS, threads);
  if (status == SS_OK) status = _zokdSSQuantiles(task, SS_EST_QUANTILES, SS_METHOD_FAST, threads);
  __zokSSDeleteTask(&task);
  return status;
}

int main(int argc, char** argv) {
  FILE* file = argc > 1 ? fopen(argv[1], "r") : 0;
  if (file == 0) {
    fprintf(stderr, "summary: give a CSV file of %d columns of numbers below their names\n", p);
    return 2;
  }
  const int32_t n = read_rows(file);
  fclose(file);
  const int32_t status = summarise(n);
  if (status != SS_OK) {
    fprintf(stderr, "summary: status %d\n", status);
    return 1;
  }
  printf("%d rows, %d threads at most\n", n, orv_threads_pool()->max_threads());
  for (int j = 0; j < p; ++j) {
    printf("column %d: mean %.4f, deviation %.4f, quartiles %g %g %g, correlation", j + 1, mean[j],
           sqrt(cov[j][j]), quantiles[j][0], quantiles[j][1], quantiles[j][2]);
    for (int k = 0; k < j; ++k) printf(" %.4f", cor[j][k]); /* cor[j][j] is the variance */
    printf("\n");
  }
  return 0;
}
