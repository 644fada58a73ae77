// SPDX-License-Identifier: MIT
// The four entry stubs of every function: each calls through one slot of the table.
#include <orv/qem.h>
#include <orv/qem_functions.h>

#include "shapes.def"

#define ORV_LA_SUFFIX_s _21
#define ORV_LA_SUFFIX_d _50
#define ORV_LA_SUFFIX_c _21
#define ORV_LA_SUFFIX_z _50
#define ORV_EP_SUFFIX_s _11
#define ORV_EP_SUFFIX_d _26
#define ORV_EP_SUFFIX_c _11
#define ORV_EP_SUFFIX_z _26

// Elements and their parts.
#define ORV_STUB_s(shape) ORV_STUB_##shape(float, float)
#define ORV_STUB_d(shape) ORV_STUB_##shape(double, double)
#define ORV_STUB_c(shape) ORV_STUB_##shape(QemComplexFloat, float)
#define ORV_STUB_z(shape) ORV_STUB_##shape(QemComplexDouble, double)

#define ORV_JOIN(a, b) ORV_JOIN_EXPANDED(a, b)
#define ORV_JOIN_EXPANDED(a, b) a##b

#define ORV_STUB(name, slot, t, F, shape) \
  void name(ORV_STUB_##t(shape)) { orv_qem_kernel_##t##F##_ttab[slot](ORV_PASS_##shape); }

#define ORV_FUNCTION(t, F, shape, ...)                              \
  ORV_STUB(ORV_JOIN(_qem##t##F, ORV_LA_SUFFIX_##t), 0, t, F, shape) \
  ORV_STUB(_qem##t##F##_HA, 1, t, F, shape)                         \
  ORV_STUB(_qem##t##F, 1, t, F, shape)                              \
  ORV_STUB(ORV_JOIN(_qem##t##F, ORV_EP_SUFFIX_##t), 2, t, F, shape)
#include "functions.def"
