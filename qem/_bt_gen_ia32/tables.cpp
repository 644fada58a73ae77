// SPDX-License-Identifier: MIT
// The kernel table and the cost table of every function.
#include <orv/qem.h>
#include <orv/qem_functions.h>

#define ORV_FUNCTION(t, F, shape, la, ha, ep, cost_la, cost_ha, cost_ep, ...)                    \
  const Qem##shape##_##t orv_qem_kernel_##t##F##_ttab[3] = {                                     \
      orv_qem_kernel_##t##F##_##la, orv_qem_kernel_##t##F##_##ha, orv_qem_kernel_##t##F##_##ep}; \
  const float orv_qem_kernel_##t##F##_ctab[3] = {cost_la, cost_ha, cost_ep};
#include "functions.def"
