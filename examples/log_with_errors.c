/* SPDX-License-Identifier: MIT */
/* Takes logarithms of a vector at the accuracy that ORV_QEM_MODE chooses, lists the elements that
 * have none, and puts NaN where the library would leave an infinity. */
#include <math.h>
#include <orv/qem.h>
#include <stdio.h>

enum { count = 6 };

static int32_t list_error(QemErrorContext* element) {
  printf("%s: element %d, argument %g: code %d\n", element->func_name, element->index,
         element->arg1, element->code);
  element->res1 = NAN;
  return 0; /* go on: store res1 and run the other error routes */
}

int main(void) {
  const double x[count] = {1.0, 2.718281828459045, 0.0, 10.0, -1.0, 1e-300};
  double r[count];
  const int32_t level = orv_qem_kernel_GetTTableIndex();
  if (level < 0) {
    fprintf(stderr, "ORV_QEM_MODE chooses no accuracy: add QEM_LA, QEM_HA or QEM_EP\n");
    return 2;
  }
  orv_qem_kernel_SetErrorCallBack(list_error);
  orv_qem_kernel_dLn_ttab[level](count, x, r);
  for (int i = 0; i < count; ++i) printf("ln(%g) = %.17g\n", x[i], r[i]);
  return 0;
}
